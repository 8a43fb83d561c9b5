#include "TestSuiteMain.h"

int runTestRecordsAndErrors(int, char**);
int runTestJsonFiles(int, char**);
int runTestIniAndModes(int, char**);

int main(int argc, char** argv)
{
    return kvmstest::runSuite(argc, argv, { runTestRecordsAndErrors, runTestJsonFiles, runTestIniAndModes });
}
