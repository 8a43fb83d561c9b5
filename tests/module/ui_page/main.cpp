#include "TestSuiteMain.h"

int runTestPage(int, char**);
int runTestPagePieces(int, char**);

int main(int argc, char** argv)
{
    return kvmstest::runSuite(argc, argv, { runTestPage, runTestPagePieces });
}
