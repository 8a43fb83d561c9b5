#include "SingletonProbe.h"

#include "KSingleton.h"

ProbeObject* probeFromLibrary()
{
    return KCOMMON::KSingleton<ProbeObject>::instance();
}
