#include "SdkTests.h"

#include <QCoreApplication>
#include <QtTest>

#include <memory>

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QCoreApplication app(argc, argv);

    int failures = 0;
    for (auto create : { createSessionTests, createConnectionLossTests, createCallTests }) {
        std::unique_ptr<QObject> tests(create());
        failures += QTest::qExec(tests.get(), argc, argv);
    }
    return failures == 0 ? 0 : 1;
}
