#include "SdkCallLog.h"

#include "LogInfo.h"

#include <QDateTime>

namespace kvms_matrix {

const char* const SdkCallLog::kGetMatrix = "{ funcName = %1 , params{ mHandle = %2 , layoutCol = %3 , layoutRow = %4 } "
                                           ", ret = %5 , time = %6 ,  Elapsed = %7 }";
const char* const SdkCallLog::kBannerFailed = "{ funcName = %1 , ret = %2 , time = %3 , failed to get banner!";
const char* const SdkCallLog::kDivisions = "{ funcName = %1 , params{ mHandle = %2 , windId = %3 , division = %4 } "
                                           ", ret = %5 , time = %6 ,  Elapsed = %7 }";
const char* const SdkCallLog::kSetStatus = "{ funcName = %1 , ip = %2 , ret = %3 , time = %4 }";
const char* const SdkCallLog::kSetScreens = "{ funcName = %1 , params{ mHandle = %2 , screensInfo = %3 , cnt = %4  "
                                            ", reset = %5 } , ret = %6 , time = %7 ,  Elapsed = %8 }";
const char* const SdkCallLog::kDisplayScreen
    = "{ funcName = %1 , params { device = %2 } , ret = %3  , time = %4  , Elapsed = %5 }";
const char* const SdkCallLog::kDisplayFrame
    = "{ funcName = %1 , params{ windowId = %2 , device = %3 } ,ret = %4, time = %5 , elapsd = %6 }";
const char* const SdkCallLog::kDeviceGet
    = "{ funcName = %1 , params { mHandle = %2 ,windowId = %8 } , ret = %5  , time = %6  , Elapsed = %7 }";
const char* const SdkCallLog::kTimed
    = "{ funcName = %1 , params{ mHandle = %2 } , ret = %3 , time = %4 ,  Elapsed = %5 }";

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

QString SdkCallLog::fill(const char* templateText, const QStringList& values)
{
    const QString text = QString::fromLatin1(templateText);
    QString out;
    out.reserve(text.size() + 64);
    for (int i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c == QLatin1Char('%') && i + 1 < text.size() && text.at(i + 1).isDigit()) {
            const int n = text.at(i + 1).digitValue();
            if (n >= 1 && n <= values.size()) {
                out += values.at(n - 1);
                ++i;
                continue;
            }
        }
        out += c;
    }
    return out;
}

void SdkCallLog::write(const char* templateText, const QStringList& values)
{
    line(fill(templateText, values));
}

void SdkCallLog::timed(const char* funcName, const void* sdkHandle, int ret, qint64 elapsedMs)
{
    write(kTimed,
        { QString::fromLatin1(funcName), SdkCallLog::pointer(sdkHandle), QString::number(ret), SdkCallLog::now(),
            QString::number(elapsedMs) });
}

} // namespace kvms_matrix
