#include "SnapshotJson.h"

#include "core/DecoderConfig.h"
#include "core/DecoderSnapshot.h"

#include <QJsonArray>

namespace vdec {

namespace {

QString textOf(const char* field, size_t size)
{
    return QString::fromUtf8(field, int(qstrnlen(field, size)));
}

QJsonValue sourceJson(const Window& w, int32_t sub)
{
    const auto it = w.sources.find(sub);
    if (it == w.sources.end())
        return QJsonValue::Null;
    const DeviceInfo_t& d = it->second;
    return QJsonObject { { "devId", textOf(d.devId, sizeof d.devId) }, { "name", textOf(d.name, sizeof d.name) },
        { "protocol", d.protocol }, { "channel", d.channel }, { "stream", d.stream },
        { "ip", textOf(d.ip, sizeof d.ip) }, { "mainUrl", textOf(d.mainUrl, sizeof d.mainUrl) } };
}

QJsonValue mediaJson(const SubWindowMedia* m)
{
    if (!m)
        return QJsonValue::Null;
    QJsonObject o { { "frames", qint64(m->frames) }, { "bytes", qint64(m->bytes) }, { "decoded", qint64(m->decoded) },
        { "failed", qint64(m->failed) }, { "lastCodec", m->lastCodec } };
    if (!m->picture.isNull())
        o.insert("picture", QJsonObject { { "width", m->picture.width() }, { "height", m->picture.height() } });
    return o;
}

QJsonValue videoJson(const VideoStatus* v)
{
    if (!v)
        return QJsonValue::Null;
    QJsonObject o { { "state", VideoStatus::stateName(v->state) }, { "url", v->url },
        { "stream", v->sub ? QStringLiteral("sub") : QStringLiteral("main") }, { "attempts", v->attempts },
        { "packets", qint64(v->packets) }, { "decoded", qint64(v->decoded) }, { "shown", qint64(v->shown) },
        { "dropped", qint64(v->dropped) }, { "failed", qint64(v->failed) }, { "maxLateMs", v->maxLateMs } };
    if (!v->reason.isEmpty())
        o.insert("reason", v->reason);
    if (v->state == VideoStatus::State::NoSignal)
        o.insert("retryInMs", v->retryInMs);
    if (v->source.isValid())
        o.insert("source", QJsonObject { { "width", v->source.width() }, { "height", v->source.height() } });
    if (v->cameraFrame >= 0) {
        o.insert("cameraFrame", v->cameraFrame);
        o.insert("cameraTimeMs", v->cameraTimeMs);
        o.insert("latencyMs", v->latencyMs);
    }
    return o;
}

QJsonObject windowJson(const DecoderSnapshot& s, const Window& w)
{
    QJsonArray subs;
    for (int32_t sub = 1; sub <= w.division; ++sub) {
        QJsonObject o { { "index", sub }, { "source", sourceJson(w, sub) },
            { "media", mediaJson(s.mediaOf(w.id, sub)) } };
        if (const VideoStatus* v = s.videoOf(w.id, sub))
            o.insert("video", videoJson(v));
        subs.append(o);
    }
    return QJsonObject { { "id", qint64(w.id) }, { "floating", w.floating }, { "x", w.x }, { "y", w.y }, { "w", w.w },
        { "h", w.h }, { "layer", w.layer }, { "division", w.division }, { "fullScreen", w.fullScreenSub },
        { "subWindows", subs } };
}

QJsonObject bannerJson(const BannerInfo_t& b)
{
    return QJsonObject { { "show", b.show != 0 }, { "message", textOf(b.message, sizeof b.message) },
        { "direction", b.direction }, { "speed", b.speed }, { "x", b.x }, { "y", b.y }, { "w", b.w }, { "h", b.h },
        { "fontSize", b.fontSize }, { "fontColor", QStringLiteral("#%1").arg(b.fontColor, 8, 16, QLatin1Char('0')) },
        { "backColor", QStringLiteral("#%1").arg(b.backColor, 8, 16, QLatin1Char('0')) } };
}

} // namespace

QJsonObject SnapshotJson::toJson(
    const DecoderConfig& config, const DecoderSnapshot& s, const WallOverlays& overlays, int clients)
{
    QJsonArray windows;
    for (const Window& w : s.windows)
        windows.append(windowJson(s, w));
    QJsonArray distributions;
    for (const MediaDistribution& d : s.distributions) {
        distributions.append(QJsonObject { { "id", qint64(d.id) }, { "sourceName", d.sourceName },
            { "channel", d.channel }, { "url", d.url }, { "frames", qint64(d.frames) }, { "bytes", qint64(d.bytes) } });
    }
    return QJsonObject {
        { "deviceId", config.deviceId },
        { "model", config.model },
        { "address", config.address },
        { "clients", clients },
        { "name", s.name },
        { "grid", QJsonObject { { "cols", s.cols }, { "rows", s.rows } } },
        { "activated", s.activated },
        { "identify", overlays.identify },
        { "windows", windows },
        { "distributions", distributions },
        { "banner", bannerJson(s.banner) },
    };
}

} // namespace vdec
