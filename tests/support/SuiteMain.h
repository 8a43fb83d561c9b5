#pragma once

#include "TestMain.h"

#include <functional>

class QObject;

namespace kvmstest {

using TestFactory = std::function<QObject*()>;

// Adds a test class to the program's suite; use KVMS_TEST_CLASS in the class's own file.
// Classes run by rank, then by name: a class that needs a fresh process-wide singleton ranks
// below 0, one that tears such a singleton down ranks above 0.
bool registerTestClass(const char* name, int rank, TestFactory create);

// Runs one test object as QTest::qExec would, with the command line cut to what concerns it:
// test function names it does not declare are left out, and when the line names functions of
// other objects only, this one is skipped (returns 0).
int runTestObject(QObject* test, int argc, char** argv);

// Runs the registered classes one after another and returns the number of failed tests (at most
// 127, an exit status). "-class A,B" (taken out before QTest reads the arguments) runs only those
// classes; function names given run in whichever class declares them.
int runTestClasses(int argc, char** argv);

} // namespace kvmstest

#define KVMS_TEST_CLASS_RANKED(Class, rank)                                                                            \
    namespace {                                                                                                        \
    const bool registered##Class                                                                                       \
        = kvmstest::registerTestClass(#Class, rank, [] { return static_cast<QObject*>(new Class); });                  \
    }

#define KVMS_TEST_CLASS(Class) KVMS_TEST_CLASS_RANKED(Class, 0)

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
