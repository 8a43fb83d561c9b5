#include "WallJson.h"

#include "PresentationJson.h"
#include "Wall.h"

#include <QJsonArray>

#include <cstring>

namespace vdec {

namespace {

template <class Record> QString recordToBase64(const Record& record)
{
    return QString::fromLatin1(QByteArray(reinterpret_cast<const char*>(&record), sizeof record).toBase64());
}

template <class Record> bool recordFromBase64(const QJsonValue& value, Record& record)
{
    const QByteArray bytes = QByteArray::fromBase64(value.toString().toLatin1());
    if (bytes.size() != int(sizeof record))
        return false;
    memcpy(&record, bytes.constData(), sizeof record);
    return true;
}

QJsonObject windowToJson(const Window& w)
{
    QJsonArray sources;
    for (const auto& [sub, device] : w.sources)
        sources.append(recordToBase64(device));
    return QJsonObject { { "id", qint64(w.id) }, { "floating", w.floating }, { "x", w.x }, { "y", w.y }, { "w", w.w },
        { "h", w.h }, { "layer", w.layer }, { "division", w.division }, { "fullScreen", w.fullScreenSub },
        { "sourceKind", w.sourceKind }, { "turnIndex", w.turnIndex }, { "sources", sources } };
}

bool windowFromJson(const QJsonObject& o, Window& w)
{
    const qint64 id = o.value("id").toVariant().toLongLong();
    if (id <= 0 || id > INT32_MAX)
        return false;
    w.id = uint32_t(id);
    w.floating = o.value("floating").toBool();
    w.x = o.value("x").toInt();
    w.y = o.value("y").toInt();
    w.w = o.value("w").toInt();
    w.h = o.value("h").toInt();
    w.layer = o.value("layer").toInt();
    w.division = o.value("division").toInt(1);
    w.fullScreenSub = o.value("fullScreen").toInt();
    w.sourceKind = o.value("sourceKind").toInt();
    w.turnIndex = o.value("turnIndex").toInt();
    for (const QJsonValue& value : o.value("sources").toArray()) {
        DeviceInfo_t device {};
        if (!recordFromBase64(value, device) || w.sources.count(device.subWindow))
            return false;
        w.sources[device.subWindow] = device;
    }
    return true;
}

} // namespace

QJsonObject WallJson::toJson(const Window& window)
{
    return windowToJson(window);
}

bool WallJson::fromJson(const QJsonObject& object, Window& window)
{
    return windowFromJson(object, window);
}

QJsonObject WallJson::toJson(const Wall& wall)
{
    QJsonArray screens;
    for (const ScreenInfo_t& s : wall.screens())
        screens.append(recordToBase64(s));
    QJsonArray windows;
    for (const Window& w : wall.windows().windows())
        windows.append(windowToJson(w));
    return QJsonObject {
        { "cols", wall.cols() },
        { "rows", wall.rows() },
        { "name", wall.name() },
        { "status", wall.status() },
        { "masterIp", wall.masterIp() },
        { "clockOffsetSecs", wall.clockOffsetSecs() },
        { "lastSetTime", wall.lastSetTime().toString(Qt::ISODate) },
        { "screens", screens },
        { "windows", windows },
        { "presentation", PresentationJson::toJson(wall) },
        { "distributions", wall.distributions().toJson() },
        { "lastDistributionId", qint64(wall.distributions().lastId()) },
    };
}

bool WallJson::fromJson(const QJsonObject& o, Wall& wall, int* dropped)
{
    const QDateTime lastSet = QDateTime::fromString(o.value("lastSetTime").toString(), Qt::ISODate);
    if (!wall.restore(o.value("cols").toInt(), o.value("rows").toInt(), o.value("name").toString(),
            o.value("status").toInt(), o.value("masterIp").toString(),
            o.value("clockOffsetSecs").toVariant().toLongLong(), lastSet))
        return false;

    std::vector<ScreenInfo_t> screens;
    for (const QJsonValue& value : o.value("screens").toArray()) {
        ScreenInfo_t s {};
        if (!recordFromBase64(value, s))
            return false;
        screens.push_back(s);
    }
    if (!wall.restoreScreens(screens))
        return false;

    std::vector<Window> windows;
    int bad = 0;
    for (const QJsonValue& value : o.value("windows").toArray()) {
        Window w;
        if (windowFromJson(value.toObject(), w))
            windows.push_back(std::move(w));
        else
            ++bad;
    }
    bad += wall.windows().restore(std::move(windows));
    // Older files have none; bad entries are dropped, they only ever fed a picture.
    wall.distributions().fromJson(o.value("distributions").toArray(),
        uint32_t(qBound<qint64>(0, o.value("lastDistributionId").toVariant().toLongLong(), UINT32_MAX)));
    PresentationJson::fromJson(o.value("presentation").toObject(), wall); // after the windows it refers to
    if (dropped)
        *dropped = bad;
    return true;
}

} // namespace vdec
