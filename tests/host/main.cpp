#include "SuiteMain.h"

int main(int argc, char** argv)
{
    kvmstest::prepareEnvironment();
    QApplication app(argc, argv);
    QStandardPaths::setTestModeEnabled(true); // never the user's own folders
    return kvmstest::runTestClasses(argc, argv);
}
