#include "PageRig.h"

#include "TestTimeout.h"

#include "MainMatrixForm.h"
#include "MatrixForm.h"
#include "MatrixPageState.h"
#include "MatrixSdkWorker.h"

#include "KSingleton.h"
#include "SystemAssistant.h"

#include <QDir>
#include <QFile>
#include <QtTest>

using namespace kvms_matrix;
using kvmstest::scaled;

void PageRig::settledWallPage(MainMatrixForm& form)
{
    QFile file(QStringLiteral("decoderConfig.json"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(R"({"matrixList":[{"type":0,"ip":"127.0.0.9","port":1,"manager_port":1,"username":"admin",)"
               R"("password":"x"}]})");
    file.close();
    form.slotUpdateScreen();
    MatrixForm* page = form.tvWallPage();
    QTRY_COMPARE_WITH_TIMEOUT(page->state().link(nowhere()), MatrixPageState::Link::Lost, scaled(5000));
    page->stopReconnecting();
}

bool PageRig::setUp()
{
    previous_ = QDir::currentPath();
    SystemAssistant::setMessageSink([](const QString&) {});
    return dir_.isValid() && QDir::setCurrent(dir_.path());
}

void PageRig::clearFiles()
{
    for (const char* name : { "decoderConfig.json", "tvWallConfig.json", "tvWallConfig.ini", "matrixConfig.json" })
        QFile::remove(QString::fromLatin1(name));
    SystemAssistant::clearRecentMessages();
}

void PageRig::tearDown()
{
    MatrixSdkWorker* worker = KCOMMON::KSingleton<MatrixSdkWorker>::instance();
    worker->setDispatchObserver(nullptr, nullptr);
    worker->finishPendingAndStop();
    worker->wait(scaled(10000));
    QDir::setCurrent(previous_);
}
