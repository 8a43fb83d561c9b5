#include "SuiteMain.h"

KVMS_SUITE_MAIN()
