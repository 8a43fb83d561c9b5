#pragma once

#include "TestMain.h"

#include <QObject>

#include <initializer_list>

namespace kvmstest {

// Runs one test object as QTest::qExec would, with the command line cut to what concerns it:
// test function names it does not declare are left out, and when the line names functions of
// other objects only, this one is skipped (returns 0). Options pass through unchanged.
int runTestObject(QObject* test, int argc, char** argv);

template <typename Test> int runTestClass(int argc, char** argv)
{
    Test test;
    return runTestObject(&test, argc, argv);
}

// The main of a suite of several test classes in one executable: the offscreen application,
// then each class in the order given (see KVMS_TEST_CLASS); returns the sum of their failures.
using TestRun = int (*)(int argc, char** argv);
int runSuite(int argc, char** argv, std::initializer_list<TestRun> runs);

} // namespace kvmstest

// Defines run<Class>(argc, argv), for the suite's main to list; put it after the class.
#define KVMS_TEST_CLASS(Class)                                                                                         \
    int run##Class(int argc, char** argv)                                                                              \
    {                                                                                                                  \
        return kvmstest::runTestClass<Class>(argc, argv);                                                              \
    }
