#include "ActionsTests.h"
#include "TestMain.h"

#include "SystemAssistant.h"

#include <QMutex>

namespace {
QMutex messageMutex;
QStringList shown;
} // namespace

QStringList actionstest::messages()
{
    QMutexLocker lock(&messageMutex);
    return shown;
}

void actionstest::clearMessages()
{
    QMutexLocker lock(&messageMutex);
    shown.clear();
}

int main(int argc, char** argv)
{
    kvmstest::prepareEnvironment();
    QApplication app(argc, argv);
    app.setAttribute(Qt::AA_Use96Dpi, true);
    SystemAssistant::setMessageSink([](const QString& text) {
        QMutexLocker lock(&messageMutex);
        shown.append(text);
    });
    int failed = 0;
    {
        CanvasActionsTest canvas;
        failed += QTest::qExec(&canvas, argc, argv);
    }
    {
        PageActionsTest page;
        failed += QTest::qExec(&page, argc, argv);
    }
    return failed;
}
