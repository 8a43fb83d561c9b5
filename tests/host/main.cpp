#include "HostTests.h"

#include <QApplication>
#include <QtTest>

#include <memory>

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QStandardPaths::setTestModeEnabled(true);

    int failures = 0;
    for (auto create : { createCommonTests, createModuleBaseTests, createWorkerTests, createClientSdkTests }) {
        std::unique_ptr<QObject> tests(create());
        failures += QTest::qExec(tests.get(), argc, argv);
    }
    return failures == 0 ? 0 : 1;
}
