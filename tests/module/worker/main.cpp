#include "TestSuiteMain.h"

int runTestWorkerQueue(int, char**);
int runTestWorkerConnections(int, char**);
int runTestWorkerMaintenance(int, char**);
int runTestDiscovery(int, char**);
int runTestNetworkSettings(int, char**);
int runTestWorkerShutdown(int, char**);

// The worker's thread starts once per process: the queue's class needs it never started, and
// the shutdown's ends it.
int main(int argc, char** argv)
{
    return kvmstest::runSuite(argc, argv,
        { runTestWorkerQueue, runTestWorkerConnections, runTestWorkerMaintenance, runTestDiscovery,
            runTestNetworkSettings, runTestWorkerShutdown });
}
