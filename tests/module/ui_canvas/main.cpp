#include "CanvasTests.h"

#include "SystemAssistant.h"
#include "TestMain.h"

void CanvasTests::init()
{
    SystemAssistant::clearRecentMessages();
    SystemAssistant::setMessageSink([](const QString&) {});
}

void CanvasTests::cleanup()
{
    SystemAssistant::setMessageSink({});
}

KVMS_TEST_MAIN(CanvasTests)
