#include "WallCallLog.h"

#include "SdkCallLog.h"

namespace kvms_matrix {

const char* const WallCallLog::kGetMatrix
    = "{ funcName = %1 , params{ mHandle = %2 , layoutCol = %3 , layoutRow = %4 } "
      ", ret = %5 , time = %6 ,  Elapsed = %7 }";
const char* const WallCallLog::kBannerFailed = "{ funcName = %1 , ret = %2 , time = %3 , failed to get banner!";
const char* const WallCallLog::kDivisions = "{ funcName = %1 , params{ mHandle = %2 , windId = %3 , division = %4 } "
                                            ", ret = %5 , time = %6 ,  Elapsed = %7 }";
const char* const WallCallLog::kSetStatus = "{ funcName = %1 , ip = %2 , ret = %3 , time = %4 }";
const char* const WallCallLog::kSetScreens = "{ funcName = %1 , params{ mHandle = %2 , screensInfo = %3 , cnt = %4  "
                                             ", reset = %5 } , ret = %6 , time = %7 ,  Elapsed = %8 }";
const char* const WallCallLog::kDisplayScreen
    = "{ funcName = %1 , params { device = %2 } , ret = %3  , time = %4  , Elapsed = %5 }";
const char* const WallCallLog::kDisplayFrame
    = "{ funcName = %1 , params{ windowId = %2 , device = %3 } ,ret = %4, time = %5 , elapsd = %6 }";
const char* const WallCallLog::kDeviceGet
    = "{ funcName = %1 , params { mHandle = %2 ,windowId = %8 } , ret = %5  , time = %6  , Elapsed = %7 }";
const char* const WallCallLog::kTimed
    = "{ funcName = %1 , params{ mHandle = %2 } , ret = %3 , time = %4 ,  Elapsed = %5 }";

QString WallCallLog::fill(const char* templateText, const QStringList& values)
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

void WallCallLog::write(const char* templateText, const QStringList& values)
{
    SdkCallLog::line(fill(templateText, values));
}

void WallCallLog::timed(const char* funcName, const void* sdkHandle, int ret, qint64 elapsedMs)
{
    write(kTimed,
        { QString::fromLatin1(funcName), SdkCallLog::pointer(sdkHandle), QString::number(ret), SdkCallLog::now(),
            QString::number(elapsedMs) });
}

} // namespace kvms_matrix
