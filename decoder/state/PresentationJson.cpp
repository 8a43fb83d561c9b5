#include "PresentationJson.h"

#include "Wall.h"
#include "WallJson.h"

#include <QJsonArray>
#include <QtDebug>

#include <cstring>

namespace vdec {

namespace {

template <class Record> QString toBase64(const Record& record)
{
    return QString::fromLatin1(QByteArray(reinterpret_cast<const char*>(&record), sizeof record).toBase64());
}

template <class Record> bool fromBase64(const QJsonValue& value, Record& record)
{
    const QByteArray bytes = QByteArray::fromBase64(value.toString().toLatin1());
    if (bytes.size() != int(sizeof record))
        return false;
    memcpy(&record, bytes.constData(), sizeof record);
    return true;
}

QJsonArray loopsToJson(const std::map<int32_t, LoopRun>& runs)
{
    QJsonArray out;
    for (const auto& [windowId, run] : runs) {
        out.append(QJsonObject { { "window", windowId }, { "scheme", qint64(run.schemeId) },
            { "start", run.startIndex }, { "turn", qint64(run.turn) } });
    }
    return out;
}

std::map<int32_t, LoopRun> loopsFromJson(const QJsonArray& array, int& dropped)
{
    std::map<int32_t, LoopRun> runs;
    for (const QJsonValue& value : array) {
        const QJsonObject o = value.toObject();
        LoopRun run;
        const int32_t window = o.value("window").toInt();
        run.schemeId = uint32_t(o.value("scheme").toVariant().toLongLong());
        run.startIndex = o.value("start").toInt(-1);
        run.turn = o.value("turn").toVariant().toLongLong();
        if (window <= 0 || run.schemeId == 0 || run.startIndex < 0 || run.turn < 0 || runs.count(window)) {
            ++dropped;
            continue;
        }
        runs[window] = run;
    }
    return runs;
}

QJsonObject sceneToJson(const Scene& s)
{
    QJsonArray windows;
    for (const Window& w : s.windows)
        windows.append(WallJson::toJson(w));
    return QJsonObject { { "id", qint64(s.id) }, { "name", QString::fromStdString(s.name) }, { "windows", windows },
        { "loops", loopsToJson(s.loops) } };
}

bool sceneFromJson(const QJsonObject& o, Scene& s, int& dropped)
{
    s.id = uint32_t(o.value("id").toVariant().toLongLong());
    s.name = o.value("name").toString().toStdString();
    for (const QJsonValue& value : o.value("windows").toArray()) {
        Window w;
        if (!WallJson::fromJson(value.toObject(), w))
            return false;
        s.windows.push_back(std::move(w));
    }
    s.loops = loopsFromJson(o.value("loops").toArray(), dropped);
    return true;
}

QJsonObject schemeToJson(const Scheme& s)
{
    QJsonArray devices;
    for (const SchemeDevice_t& d : s.devices)
        devices.append(toBase64(d));
    return QJsonObject { { "info", toBase64(s.info) }, { "devices", devices } };
}

bool schemeFromJson(const QJsonObject& o, Scheme& s)
{
    if (!fromBase64(o.value("info"), s.info))
        return false;
    for (const QJsonValue& value : o.value("devices").toArray()) {
        SchemeDevice_t d {};
        if (!fromBase64(value, d))
            return false;
        s.devices.push_back(d);
    }
    return true;
}

} // namespace

QJsonObject PresentationJson::toJson(const Wall& wall)
{
    QJsonArray scenes;
    for (const auto& [id, scene] : wall.scenes().scenes())
        scenes.append(sceneToJson(scene));
    QJsonArray schemes;
    for (const auto& [id, scheme] : wall.schemes().schemes())
        schemes.append(schemeToJson(scheme));
    QJsonArray colors;
    for (const auto& [cell, color] : wall.outputs().screenColors())
        colors.append(QJsonObject { { "col", cell.first }, { "row", cell.second }, { "color", toBase64(color) } });
    return QJsonObject {
        { "scenes", scenes },
        { "schemes", schemes },
        { "loops", loopsToJson(wall.loops().runs()) },
        { "banner", toBase64(wall.outputs().banner()) },
        { "screenColors", colors },
        { "audio", toBase64(wall.outputs().audio()) },
    };
}

int PresentationJson::fromJson(const QJsonObject& o, Wall& wall)
{
    int dropped = 0;
    std::vector<Scene> scenes;
    for (const QJsonValue& value : o.value("scenes").toArray()) {
        Scene s;
        if (sceneFromJson(value.toObject(), s, dropped))
            scenes.push_back(std::move(s));
        else
            ++dropped;
    }
    dropped += wall.scenes().restore(std::move(scenes));

    std::vector<Scheme> schemes;
    for (const QJsonValue& value : o.value("schemes").toArray()) {
        Scheme s;
        if (schemeFromJson(value.toObject(), s))
            schemes.push_back(std::move(s));
        else
            ++dropped;
    }
    dropped += wall.schemes().restore(std::move(schemes));

    // Checked and set turning when the decoder resumes them (DecoderCore).
    wall.loops().adopt(loopsFromJson(o.value("loops").toArray(), dropped));

    OutputSettings& outputs = wall.outputs();
    BannerInfo_t banner {};
    if (o.contains("banner") && (!fromBase64(o.value("banner"), banner) || outputs.setBanner(banner) != CMATRIX_OK))
        ++dropped;
    for (const QJsonValue& value : o.value("screenColors").toArray()) {
        const QJsonObject c = value.toObject();
        ScreenColor color {};
        const OutputSettings::Cell cell { c.value("col").toInt(-1), c.value("row").toInt(-1) };
        if (!fromBase64(c.value("color"), color)
            || outputs.setScreenColor(cell, wall.cols(), wall.rows(), color) != CMATRIX_OK)
            ++dropped;
    }
    DeviceAudioInfo_t audio {};
    if (o.contains("audio")
        && (!fromBase64(o.value("audio"), audio) || outputs.setAudio(audio, wall.windows()) != CMATRIX_OK))
        ++dropped;
    if (dropped > 0)
        qWarning() << "state file: dropped" << dropped << "invalid scenes, schemes, loops or settings";
    return dropped;
}

} // namespace vdec
