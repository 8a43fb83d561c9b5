#pragma once

#include "TestMain.h"

#include <functional>

class QObject;

namespace kvmstest {

using TestFactory = std::function<QObject*()>;

// Adds a test class to the program's suite; use KVMS_TEST_CLASS in the class's own file.
bool registerTestClass(const char* name, TestFactory create);

// Runs the registered classes one after another (in name order) with QTest::qExec and returns
// the number of failed tests (at most 127, an exit status). "-class A,B" (taken out before QTest reads the arguments)
// runs only those classes, so "-class TestLogin lockExpires" runs one function and "-class TestLogin -functions" lists
// one class's functions.
int runTestClasses(int argc, char** argv);

} // namespace kvmstest

#define KVMS_TEST_CLASS(Class)                                                                                         \
    namespace {                                                                                                        \
    const bool registered##Class                                                                                       \
        = kvmstest::registerTestClass(#Class, [] { return static_cast<QObject*>(new Class); });                        \
    }

// The main of a suite made of KVMS_TEST_CLASS classes, on the test platform.
#define KVMS_SUITE_MAIN()                                                                                              \
    int main(int argc, char** argv)                                                                                    \
    {                                                                                                                  \
        kvmstest::prepareEnvironment();                                                                                \
        QApplication app(argc, argv);                                                                                  \
        app.setAttribute(Qt::AA_Use96Dpi, true);                                                                       \
        QTEST_SET_MAIN_SOURCE_PATH                                                                                     \
        return kvmstest::runTestClasses(argc, argv);                                                                   \
    }
