#include "TestMain.h"

namespace kvmstest {

void prepareEnvironment()
{
    // A test that needs a real display (screen capture under Xvfb) names its platform in
    // KVMS_TEST_PLATFORM from its CTest command; everything else runs offscreen.
    const QByteArray platform = qgetenv("KVMS_TEST_PLATFORM");
    qputenv("QT_QPA_PLATFORM", platform.isEmpty() ? QByteArray("offscreen") : platform);
}

} // namespace kvmstest
