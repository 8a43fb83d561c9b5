#include "ModuleAccess.h"

ModuleAccess::ModuleAccess(QObject* parent)
    : QObject(parent)
{
}
