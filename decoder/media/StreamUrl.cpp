#include "StreamUrl.h"

#include <QUrl>

namespace vdec {

namespace {

QString textOf(const char* field, size_t size)
{
    return QString::fromUtf8(field, int(qstrnlen(field, size)));
}

} // namespace

bool StreamUrl::isLive(const DeviceInfo_t& s)
{
    const QString id = textOf(s.devId, sizeof s.devId);
    if (id.isEmpty() || id == QLatin1String("hdmiinput") || id == QLatin1String("usbfileplay"))
        return false;
    if (s.protocol == 3)
        return !textOf(s.mainUrl, sizeof s.mainUrl).isEmpty();
    if (s.protocol == 0 || s.protocol == 1)
        return !textOf(s.mainUrl, sizeof s.mainUrl).isEmpty() || !textOf(s.ip, sizeof s.ip).isEmpty();
    return false;
}

bool StreamUrl::wantsSub(const DeviceInfo_t& s, QSize shown)
{
    if (s.stream == 0 || s.stream == 1)
        return s.stream == 1;
    return shown.width() <= kSubAtMost.width() && shown.height() <= kSubAtMost.height();
}

QString StreamUrl::url(const DeviceInfo_t& s, bool sub)
{
    if (!isLive(s))
        return {};
    const QString main = textOf(s.mainUrl, sizeof s.mainUrl);
    const QString subUrl = textOf(s.subUrl, sizeof s.subUrl);
    if (!main.isEmpty())
        return sub && !subUrl.isEmpty() ? subUrl : main;
    QUrl u;
    u.setScheme(QStringLiteral("rtsp"));
    u.setHost(textOf(s.ip, sizeof s.ip));
    u.setPort(s.port > 0 && s.port <= 65535 ? s.port : 554);
    u.setUserName(textOf(s.userName, sizeof s.userName));
    u.setPassword(textOf(s.password, sizeof s.password));
    u.setPath(QStringLiteral("/ch%1/%2").arg(s.channel).arg(sub ? QStringLiteral("sub") : QStringLiteral("main")));
    return u.toString(QUrl::FullyEncoded);
}

QString StreamUrl::withoutCredentials(const QString& url)
{
    QUrl u(url);
    if (!u.isValid())
        return QStringLiteral("(not a URL)");
    return u.toString(QUrl::RemoveUserInfo);
}

} // namespace vdec
