#include "DevsMgrData.h"

#include "DevCatalogueReader.h"

#include <QFile>

DevsMgrData::DevsMgrData(QObject* parent)
    : QObject(parent)
{
}

bool DevsMgrData::loadFromFile(const QString& path, QString* error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        if (error)
            *error = QStringLiteral("cannot read %1: %2").arg(path, file.errorString());
        return false;
    }
    return loadFromJson(file.readAll(), error);
}

bool DevsMgrData::loadFromJson(const QByteArray& json, QString* error)
{
    DevCatalogueReader reader;
    if (!reader.read(json)) {
        if (error)
            *error = reader.error();
        return false;
    }
    {
        QWriteLocker locker(&lock_);
        devices_ = reader.devices();
        groups_ = reader.groups();
    }
    emit signalCatalogueChanged();
    return true;
}

void DevsMgrData::clear()
{
    {
        QWriteLocker locker(&lock_);
        devices_.clear();
        groups_.clear();
    }
    emit signalCatalogueChanged();
}

QList<DevRecord> DevsMgrData::devices() const
{
    QReadLocker locker(&lock_);
    return devices_;
}

QList<GroupRecord> DevsMgrData::groups() const
{
    QReadLocker locker(&lock_);
    return groups_;
}

template <typename Match> bool DevsMgrData::findDevice(Match match, DevRecord* result) const
{
    QReadLocker locker(&lock_);
    for (const DevRecord& device : devices_) {
        if (match(device)) {
            if (result)
                *result = device;
            return true;
        }
    }
    return false;
}

bool DevsMgrData::deviceById(const QString& id, DevRecord* result) const
{
    return !id.isEmpty() && findDevice([&id](const DevRecord& device) { return device.id == id; }, result);
}

bool DevsMgrData::deviceBySerialNumber(const QString& serialNumber, DevRecord* result) const
{
    return !serialNumber.isEmpty()
        && findDevice([&serialNumber](const DevRecord& device) { return device.serialNumber == serialNumber; }, result);
}

bool DevsMgrData::deviceByIp(const QString& ip, DevRecord* result) const
{
    return !ip.isEmpty() && findDevice([&ip](const DevRecord& device) { return device.ip == ip; }, result);
}

bool DevsMgrData::channelById(const QString& channelId, ChannelRecord* result) const
{
    QReadLocker locker(&lock_);
    for (const DevRecord& device : devices_) {
        for (const ChannelRecord& channel : device.channels) {
            if (channel.id == channelId) {
                if (result)
                    *result = channel;
                return true;
            }
        }
    }
    return false;
}

QList<ChannelRecord> DevsMgrData::groupChannels(const QString& groupId) const
{
    QStringList members;
    {
        QReadLocker locker(&lock_);
        for (const GroupRecord& group : groups_) {
            if (group.id == groupId)
                members = group.channelIds;
        }
    }
    QList<ChannelRecord> channels;
    for (const QString& channelId : members) {
        ChannelRecord channel;
        if (channelById(channelId, &channel))
            channels.append(channel);
    }
    return channels;
}
