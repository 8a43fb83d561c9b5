#include "TestTimeout.h"

#include <QtGlobal>

namespace kvmstest {

int scaled(int ms)
{
    static const bool ci = !qEnvironmentVariableIsEmpty("CI");
    return ci ? ms * 3 : ms;
}

} // namespace kvmstest
