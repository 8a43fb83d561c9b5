#pragma once

#include <QApplication>
#include <QtTest>

namespace kvmstest {

// Forces the offscreen platform, so tests never need a display (unless KVMS_TEST_PLATFORM
// names another one).
void prepareEnvironment();

} // namespace kvmstest

// Use instead of QTEST_MAIN: the platform must be chosen before QApplication exists.
#define KVMS_TEST_MAIN(TestObject)                                                                                     \
    int main(int argc, char** argv)                                                                                    \
    {                                                                                                                  \
        kvmstest::prepareEnvironment();                                                                                \
        QApplication app(argc, argv);                                                                                  \
        app.setAttribute(Qt::AA_Use96Dpi, true);                                                                       \
        TestObject test;                                                                                               \
        QTEST_SET_MAIN_SOURCE_PATH                                                                                     \
        return QTest::qExec(&test, argc, argv);                                                                        \
    }
