#include "TestSuiteMain.h"

int runTestWallReading(int, char**);
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
        { runTestWallReading, runTestWallLayout, runTestWallWindows, runTestWallSources, runTestWallHostile,
            runTestScenes, runTestLoops, runTestBanners, runTestDeviceFiles });
}
