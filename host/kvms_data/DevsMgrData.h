#pragma once

#include "DevRecord.h"
#include "GroupRecord.h"

#include <QList>
#include <QObject>
#include <QReadWriteLock>
#include <QString>

// The host's catalogue of devices, channels and groups, reached through
// KCOMMON::KSingleton<DevsMgrData>::instance(). Readable from any thread.
class DevsMgrData : public QObject {
    Q_OBJECT

public:
    explicit DevsMgrData(QObject* parent = nullptr);

    // Replaces the catalogue. On failure the old one stays and error (if given) says why.
    bool loadFromFile(const QString& path, QString* error = nullptr);
    bool loadFromJson(const QByteArray& json, QString* error = nullptr);
    void clear();

    QList<DevRecord> devices() const;
    QList<GroupRecord> groups() const;

    // Lookups fill *result and return true when found; empty keys never match.
    bool deviceById(const QString& id, DevRecord* result) const;
    bool deviceBySerialNumber(const QString& serialNumber, DevRecord* result) const;
    bool deviceByIp(const QString& ip, DevRecord* result) const;
    bool channelById(const QString& channelId, ChannelRecord* result) const;
    QList<ChannelRecord> groupChannels(const QString& groupId) const;

signals:
    void signalCatalogueChanged();

private:
    template <typename Match> bool findDevice(Match match, DevRecord* result) const;

    mutable QReadWriteLock lock_;
    QList<DevRecord> devices_;
    QList<GroupRecord> groups_;
};
