#include "OperationLog.h"

#include "MessageType.h"

#include <QJsonObject>

#include <cstring>

namespace vdec {

using cmatrix::wire::MessageType;

namespace {

template <size_t N> void put(char (&field)[N], const QString& text)
{
    std::memset(field, 0, N);
    QByteArray bytes = text.toUtf8();
    if (bytes.size() > int(N) - 1) {
        // Cut on a character boundary, so the entry stays valid UTF-8.
        int cut = int(N) - 1;
        while (cut > 0 && (uint8_t(bytes[cut]) & 0xc0) == 0x80)
            --cut;
        bytes.truncate(cut);
    }
    std::memcpy(field, bytes.constData(), size_t(bytes.size()));
}

struct Description {
    MessageType type;
    const char* text;
};

constexpr Description kDescriptions[] = {
    { MessageType::SetTime, "Set the clock" },
    { MessageType::SetMatrix, "Set the wall grid" },
    { MessageType::SetScreens, "Set the screens" },
    { MessageType::SetStatus, "Set the wall role" },
    { MessageType::WindowAdd, "Add windows" },
    { MessageType::WindowDel, "Delete windows" },
    { MessageType::WindowMove, "Move a window" },
    { MessageType::WindowSetFullScreen, "Set full screen" },
    { MessageType::WindowSetDivision, "Set a window division" },
    { MessageType::WindowDeviceAdd, "Bind sources" },
    { MessageType::WindowDeviceDel, "Unbind sources" },
    { MessageType::SceneCreate, "Save a scene" },
    { MessageType::SceneApply, "Apply a scene" },
    { MessageType::SceneDelete, "Delete scenes" },
    { MessageType::SchemeSet, "Save a display-in-turn scheme" },
    { MessageType::SchemeDel, "Delete display-in-turn schemes" },
    { MessageType::SchemeAddDevices, "Set scheme sources" },
    { MessageType::SchemeSelect, "Start display in turn" },
    { MessageType::WindowSetDisplayInTurn, "Switch display in turn" },
    { MessageType::DisplayBanner, "Set the banner" },
    { MessageType::WindowPlayHdmiIn, "Play an HDMI input" },
    { MessageType::WindowPlayFile, "Play a file" },
    { MessageType::SetScreenColor, "Set screen colour" },
    { MessageType::SetAudioStatus, "Set audio output" },
    { MessageType::StartMediaDistribute, "Start a media distribution" },
    { MessageType::StopMediaDistribute, "Stop a media distribution" },
    { MessageType::FirmwareUpload, "Upload firmware" },
    { MessageType::FactoryReset, "Factory reset" },
    { MessageType::SetResolution, "Set the output resolution" },
    { MessageType::PasswordModify, "Change a password" },
    { MessageType::ImportConfig, "Import the configuration" },
    { MessageType::SetupNetwork, "Change the network settings" },
    { MessageType::Activate, "Activate the unit" },
    { MessageType::DisplayScreen, "Identify the screens" },
};

} // namespace

void OperationLog::add(uint32_t time, int32_t type, const QString& user, const QString& content)
{
    LogInfo_t entry {};
    entry.time = time;
    entry.type = type;
    put(entry.user, user);
    put(entry.content, content);
    entries_.push_back(entry);
    while (entries_.size() > kCapacity)
        entries_.pop_front();
}

std::vector<LogInfo_t> OperationLog::query(int32_t type, uint32_t begin, uint32_t end) const
{
    std::vector<LogInfo_t> list;
    for (const LogInfo_t& entry : entries_) {
        if ((type == LOG_TYPE_ALL || entry.type == type) && entry.time >= begin && entry.time <= end)
            list.push_back(entry);
    }
    return list;
}

QString OperationLog::describe(uint16_t requestType)
{
    for (const Description& d : kDescriptions) {
        if (uint16_t(d.type) == requestType)
            return QString::fromLatin1(d.text);
    }
    return QStringLiteral("Request 0x%1").arg(requestType, 4, 16, QLatin1Char('0'));
}

QJsonArray OperationLog::toJson() const
{
    QJsonArray array;
    for (const LogInfo_t& e : entries_) {
        array.append(QJsonObject { { "time", qint64(e.time) }, { "type", e.type },
            { "user", QString::fromUtf8(e.user) }, { "content", QString::fromUtf8(e.content) } });
    }
    return array;
}

bool OperationLog::fromJson(const QJsonValue& value)
{
    if (!value.isArray())
        return false;
    OperationLog log;
    for (const QJsonValue& item : value.toArray()) {
        const QJsonObject o = item.toObject();
        const qint64 time = o.value("time").toVariant().toLongLong();
        const int type = o.value("type").toInt();
        if (time < 0 || time > qint64(UINT32_MAX) || type < LOG_TYPE_OPERATION || type > LOG_TYPE_SYSTEM)
            continue;
        log.add(uint32_t(time), type, o.value("user").toString(), o.value("content").toString());
    }
    entries_ = std::move(log.entries_);
    return true;
}

} // namespace vdec
