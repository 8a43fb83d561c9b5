#include "NetworkSettings.h"

#include "TextRules.h"

#include <QCryptographicHash>

#include <arpa/inet.h>
#include <cstring>

namespace vdec {

namespace {

template <size_t N> void put(char (&field)[N], const QString& text)
{
    std::memset(field, 0, N);
    const QByteArray bytes = text.toLatin1().left(int(N) - 1);
    std::memcpy(field, bytes.constData(), size_t(bytes.size()));
}

template <size_t N> QString text(const char (&field)[N])
{
    return QString::fromLatin1(field, int(strnlen(field, N)));
}

template <size_t N> bool terminated(const char (&field)[N])
{
    return TextRules::isTerminated(field, N);
}

bool parseV4(const char* text, uint32_t& out)
{
    in_addr a {};
    if (inet_pton(AF_INET, text, &a) != 1)
        return false;
    out = ntohl(a.s_addr);
    return true;
}

bool isV6(const char* text)
{
    in6_addr a {};
    return inet_pton(AF_INET6, text, &a) == 1;
}

// A unit address: no "this network", broadcast or multicast address.
bool isHostAddress(const char* text)
{
    uint32_t a = 0;
    return parseV4(text, a) && (a >> 24) != 0 && a != 0xffffffffu && (a >> 28) != 0xe;
}

// Ones then zeros, and at least one one: 255.0.0.0 passes, 255.0.255.0 and 0.0.0.0 do not.
bool isMask(const char* text)
{
    uint32_t m = 0;
    if (!parseV4(text, m) || m == 0)
        return false;
    const uint32_t inverted = ~m;
    return (inverted & (inverted + 1)) == 0;
}

bool isOptionalV4(const char* text)
{
    return *text == '\0' || isHostAddress(text);
}

bool isOptionalV6(const char* text)
{
    return *text == '\0' || isV6(text);
}

} // namespace

NetworkSettings::NetworkSettings(const QString& address)
{
    put(cfg_.ipv4, address);
    put(cfg_.mask, QStringLiteral("255.0.0.0"));
    put(cfg_.gateway, QStringLiteral("127.0.0.1"));
    cfg_.prefixV6 = 64;
}

int32_t NetworkSettings::check(const DeviceNetworkCfg_t& c)
{
    if (!terminated(c.ipv4) || !terminated(c.mask) || !terminated(c.gateway) || !terminated(c.ipv6)
        || !terminated(c.gatewayV6) || !terminated(c.dns) || !terminated(c.dns2))
        return CMATRIX_ERR_INVALID_PARAM;
    if (c.dhcp != 0 && c.dhcp != 1)
        return CMATRIX_ERR_INVALID_PARAM;
    if (!isHostAddress(c.ipv4) || !isMask(c.mask) || !isOptionalV4(c.gateway) || !isOptionalV4(c.dns)
        || !isOptionalV4(c.dns2))
        return CMATRIX_ERR_INVALID_PARAM;
    if (!isOptionalV6(c.ipv6) || !isOptionalV6(c.gatewayV6) || c.prefixV6 < 0 || c.prefixV6 > 128)
        return CMATRIX_ERR_INVALID_PARAM;
    return CMATRIX_OK;
}

int32_t NetworkSettings::set(const DeviceNetworkCfg_t& c)
{
    if (const int32_t rc = check(c))
        return rc;
    DeviceNetworkCfg_t stored {};
    stored.dhcp = c.dhcp;
    std::memcpy(stored.ipv4, c.ipv4, sizeof stored.ipv4);
    std::memcpy(stored.mask, c.mask, sizeof stored.mask);
    std::memcpy(stored.gateway, c.gateway, sizeof stored.gateway);
    std::memcpy(stored.ipv6, c.ipv6, sizeof stored.ipv6);
    stored.prefixV6 = c.prefixV6;
    std::memcpy(stored.gatewayV6, c.gatewayV6, sizeof stored.gatewayV6);
    std::memcpy(stored.dns, c.dns, sizeof stored.dns);
    std::memcpy(stored.dns2, c.dns2, sizeof stored.dns2);
    cfg_ = stored;
    return CMATRIX_OK;
}

DeviceNetworkCfg_t NetworkSettings::record(const QString& deviceId, const QString& model, int32_t controlPort) const
{
    DeviceNetworkCfg_t r = cfg_;
    put(r.devId, deviceId);
    put(r.mac, macFor(deviceId));
    put(r.model, model);
    r.controlPort = controlPort;
    return r;
}

QJsonObject NetworkSettings::toJson() const
{
    return QJsonObject { { "dhcp", cfg_.dhcp != 0 }, { "ipv4", text(cfg_.ipv4) }, { "mask", text(cfg_.mask) },
        { "gateway", text(cfg_.gateway) }, { "ipv6", text(cfg_.ipv6) }, { "prefixV6", cfg_.prefixV6 },
        { "gatewayV6", text(cfg_.gatewayV6) }, { "dns", text(cfg_.dns) }, { "dns2", text(cfg_.dns2) } };
}

bool NetworkSettings::fromJson(const QJsonObject& o)
{
    DeviceNetworkCfg_t c {};
    c.dhcp = o.value("dhcp").toBool() ? 1 : 0;
    put(c.ipv4, o.value("ipv4").toString());
    put(c.mask, o.value("mask").toString());
    put(c.gateway, o.value("gateway").toString());
    put(c.ipv6, o.value("ipv6").toString());
    c.prefixV6 = o.value("prefixV6").toInt(-1);
    put(c.gatewayV6, o.value("gatewayV6").toString());
    put(c.dns, o.value("dns").toString());
    put(c.dns2, o.value("dns2").toString());
    return set(c) == CMATRIX_OK;
}

QString NetworkSettings::macFor(const QString& deviceId)
{
    const QByteArray digest = QCryptographicHash::hash(deviceId.toUtf8(), QCryptographicHash::Sha1);
    QStringList parts { QStringLiteral("02") }; // locally administered, unicast
    for (int i = 0; i < 5; ++i)
        parts << QStringLiteral("%1").arg(uint8_t(digest[i]), 2, 16, QLatin1Char('0'));
    return parts.join(':');
}

} // namespace vdec
