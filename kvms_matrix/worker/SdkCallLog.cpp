#include "SdkCallLog.h"

#include "LogInfo.h"

#include <QDateTime>

namespace kvms_matrix {

void SdkCallLog::call(const char* funcName, int ret)
{
    line(callText(funcName, ret));
}

void SdkCallLog::event(const char* funcName, int event)
{
    line(eventText(funcName, event));
}

void SdkCallLog::callAt(const char* funcName, int ret)
{
    line(QStringLiteral("{ funcName = %1 , ret = %2 , time = %3 }")
             .arg(QString::fromUtf8(funcName), QString::number(ret), now()));
}

void SdkCallLog::line(const QString& text)
{
    vms_sdk::log_info(text, QString());
}

QString SdkCallLog::callText(const char* funcName, int ret)
{
    return QStringLiteral("{ funcName = %1 , ret = %2 }").arg(QString::fromUtf8(funcName), QString::number(ret));
}

QString SdkCallLog::eventText(const char* funcName, int event)
{
    return QStringLiteral("{ funcName = %1  , event = %2 }").arg(QString::fromUtf8(funcName), QString::number(event));
}

QString SdkCallLog::now()
{
    return QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"));
}

QString SdkCallLog::pointer(const void* handle)
{
    return QStringLiteral("0x") + QString::number(reinterpret_cast<quintptr>(handle), 16);
}

} // namespace kvms_matrix
