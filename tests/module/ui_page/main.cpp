#include "PageTests.h"
#include "TestMain.h"

KVMS_TEST_MAIN(PageTest)
