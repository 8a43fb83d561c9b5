#include "ModuleEntry.h"

#include "matrixModuleInit.h"

#include "KSingleton.h"

ModuleInitialization* kvms_module_entry()
{
    return KCOMMON::KSingleton<kvms_matrix::matrixModuleInit>::instance();
}
