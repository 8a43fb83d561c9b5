#include "DevCatalogueReader.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>

namespace {

QString channelIdOf(const QString& deviceId, int channel)
{
    return deviceId + QLatin1Char('&') + QString::number(channel);
}

} // namespace

bool DevCatalogueReader::fail(const QString& reason)
{
    devices_.clear();
    groups_.clear();
    error_ = reason;
    return false;
}

bool DevCatalogueReader::read(const QByteArray& json)
{
    devices_.clear();
    groups_.clear();
    error_.clear();

    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(json, &parseError);
    if (parseError.error != QJsonParseError::NoError)
        return fail(QStringLiteral("not JSON: %1").arg(parseError.errorString()));
    if (!document.isObject())
        return fail(QStringLiteral("the catalogue is not an object"));

    QSet<QString> deviceIds;
    QSet<QString> channelIds;
    for (const QJsonValue& value : document.object().value(QLatin1String("devices")).toArray()) {
        const QJsonObject object = value.toObject();
        DevRecord device;
        device.id = object.value(QLatin1String("id")).toString();
        if (device.id.isEmpty())
            return fail(QStringLiteral("a device has no id"));
        if (deviceIds.contains(device.id))
            return fail(QStringLiteral("device %1 is listed twice").arg(device.id));
        deviceIds.insert(device.id);
        device.name = object.value(QLatin1String("name")).toString(device.id);
        device.serialNumber = object.value(QLatin1String("serial")).toString();
        device.ip = object.value(QLatin1String("ip")).toString();
        device.port = object.value(QLatin1String("port")).toInt();
        if (device.port < 0 || device.port > 65535)
            return fail(QStringLiteral("device %1 has port %2").arg(device.id).arg(device.port));
        device.user = object.value(QLatin1String("user")).toString();
        device.password = object.value(QLatin1String("password")).toString();

        for (const QJsonValue& channelValue : object.value(QLatin1String("channels")).toArray()) {
            const QJsonObject channelObject = channelValue.toObject();
            ChannelRecord channel;
            channel.deviceId = device.id;
            channel.channel = channelObject.value(QLatin1String("channel")).toInt(-1);
            if (channel.channel < 0)
                return fail(QStringLiteral("device %1 has a channel without a number").arg(device.id));
            channel.id = channelIdOf(device.id, channel.channel);
            if (channelIds.contains(channel.id))
                return fail(QStringLiteral("channel %1 is listed twice").arg(channel.id));
            channelIds.insert(channel.id);
            channel.name = channelObject.value(QLatin1String("name"))
                               .toString(QStringLiteral("%1-%2").arg(device.name).arg(channel.channel));
            device.channels.append(channel);
        }
        devices_.append(device);
    }

    for (const QJsonValue& value : document.object().value(QLatin1String("groups")).toArray()) {
        const QJsonObject object = value.toObject();
        GroupRecord group;
        group.id = object.value(QLatin1String("id")).toString();
        if (group.id.isEmpty())
            return fail(QStringLiteral("a group has no id"));
        group.name = object.value(QLatin1String("name")).toString(group.id);
        for (const QJsonValue& member : object.value(QLatin1String("channels")).toArray()) {
            const QString channelId = member.toString();
            if (!channelIds.contains(channelId))
                return fail(QStringLiteral("group %1 names unknown channel %2").arg(group.id, channelId));
            group.channelIds.append(channelId);
        }
        groups_.append(group);
    }
    return true;
}
