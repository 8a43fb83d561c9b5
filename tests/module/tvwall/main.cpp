#include "TestSuiteMain.h"

int runTestWallLayout(int, char**);
int runTestWallWindows(int, char**);
int runTestWallSources(int, char**);
int runTestWallHostile(int, char**);
int runTestScenes(int, char**);
int runTestLoops(int, char**);
int runTestBanners(int, char**);
int runTestDeviceFiles(int, char**);

int main(int argc, char** argv)
{
    return kvmstest::runSuite(argc, argv,
        { runTestWallLayout, runTestWallWindows, runTestWallSources, runTestWallHostile, runTestScenes, runTestLoops,
            runTestBanners, runTestDeviceFiles });
}
