#include "SystemMsg.h"

SystemMsg::SystemMsg(QObject* parent)
    : QObject(parent)
{
}
