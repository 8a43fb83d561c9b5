#include "TestSuiteMain.h"

int runTestGeometry(int, char**);
int runTestCanvas(int, char**);
int runTestFloating(int, char**);

int main(int argc, char** argv)
{
    return kvmstest::runSuite(argc, argv, { runTestGeometry, runTestCanvas, runTestFloating });
}
