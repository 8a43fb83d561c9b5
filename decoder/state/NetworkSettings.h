#pragma once

#include "CMatrixSDK.h"

#include <QJsonObject>
#include <QString>

#include <cstdint>

namespace vdec {

// The network settings a unit reports and lets an operator change: addresses, mask,
// gateways and name servers. This is a virtual unit: it keeps listening on its real
// loopback address whatever is configured here, and never sends anything to the
// configured one; the settings are only stored and reported (in discovery answers
// and network records), as a real unit's would be after a change.
class NetworkSettings {
public:
    // Factory settings of a unit listening on `address`.
    explicit NetworkSettings(const QString& address = QStringLiteral("127.0.0.1"));

    // Validates every field a client may set and stores them; nothing changes on error.
    // Texts must be terminated; IPv4 address and mask are required, the mask contiguous;
    // gateways and name servers may be empty; the IPv6 prefix is 0..128.
    int32_t set(const DeviceNetworkCfg_t& cfg);
    static int32_t check(const DeviceNetworkCfg_t& cfg);

    // The settable fields as stored; identity fields (device id, MAC, model, ports) zero.
    const DeviceNetworkCfg_t& settings() const { return cfg_; }
    QString ipv4() const { return QString::fromLatin1(cfg_.ipv4); }
    // The whole record as a client reads it: the settings and the unit's identity.
    DeviceNetworkCfg_t record(const QString& deviceId, const QString& model, int32_t controlPort) const;

    QJsonObject toJson() const;
    // False when the object holds settings that do not pass set().
    bool fromJson(const QJsonObject& object);

    // A MAC address of the locally administered kind, the same for the same device id.
    static QString macFor(const QString& deviceId);

private:
    DeviceNetworkCfg_t cfg_ {};
};

} // namespace vdec
