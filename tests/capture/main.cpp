#include "CaptureTests.h"

#include "SdkCallTap.h"
#include "TestMain.h"

void CaptureTests::initTestCase()
{
    QVERIFY(dir_.isValid());
    rig_.setLogFile(dir_.filePath("client.log"));
    QVERIFY(CaptureRig::worker());
}

void CaptureTests::cleanup()
{
    rig_.cleanup();
    SdkCallTap::clear();
}

KVMS_TEST_MAIN(CaptureTests)
