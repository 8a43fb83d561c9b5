#include "TestMain.h"

namespace kvmstest {

void prepareEnvironment()
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
}

} // namespace kvmstest
