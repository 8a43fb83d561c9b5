#include "DaemonOptions.h"

#include "net/Socket.h"

#include <QCommandLineParser>

namespace vdec {

namespace {

bool toInt(const QString& text, int low, int high, int& out)
{
    bool ok = false;
    const int value = text.toInt(&ok);
    if (!ok || value < low || value > high)
        return false;
    out = value;
    return true;
}

} // namespace

bool DaemonOptions::parse(const QStringList& arguments, DecoderConfig& config, QString* error)
{
    const DecoderConfig defaults;
    QCommandLineParser p;
    p.setApplicationDescription(QStringLiteral("A video-wall decoder on the network, for tests and demos."));
    p.addHelpOption();
    p.addVersionOption();
    const QCommandLineOption address("address", "Address to listen on (loopback).", "ip", defaults.address);
    const QCommandLineOption port("port", "TCP control port, 0 for any free one.", "port", "0");
    const QCommandLineOption udpPort("udp-port", "UDP discovery port, 0 for any free one.", "port", "0");
    const QCommandLineOption stateDir("state-dir", "Directory the state is kept in.", "dir");
    const QCommandLineOption deviceId("device-id", "Device id.", "id", defaults.deviceId);
    const QCommandLineOption model("model", "Model name.", "name", defaults.model);
    const QCommandLineOption firmware("firmware", "Firmware version.", "version", defaults.firmwareVersion);
    const QCommandLineOption serial("serial", "Serial number.", "serial", defaults.serial);
    const QCommandLineOption password(
        "password", "Password of the admin account on first start.", "password", defaults.adminPassword);
    const QCommandLineOption factoryNew("factory-new", "Start as a unit that has not been activated.");
    const QCommandLineOption maxFailures("max-failed-logins", "Wrong passwords before the account locks.", "n",
        QString::number(defaults.maxFailedLogins));
    const QCommandLineOption lockSeconds(
        "lock-seconds", "How long a locked account stays locked.", "s", QString::number(defaults.lockSeconds));
    const QCommandLineOption heartbeat(
        "heartbeat-ms", "Heartbeat interval.", "ms", QString::number(defaults.heartbeatIntervalMs));
    const QCommandLineOption timeout("heartbeat-timeout-ms", "Silence after which a client is dropped.", "ms",
        QString::number(defaults.heartbeatTimeoutMs));
    const QCommandLineOption anyAddress("allow-any-address", "Allow an address outside loopback.");
    const QCommandLineOption httpPort(
        "http-port", "Monitor page (HTTP) port, 0 for any free one, -1 for none.", "port", "0");
    p.addOptions({ address, port, udpPort, stateDir, deviceId, model, firmware, serial, password, factoryNew,
        maxFailures, lockSeconds, heartbeat, timeout, anyAddress });
    p.addOption(httpPort);
    p.process(arguments);

    auto fail = [error](const QString& why) {
        if (error)
            *error = why;
        return false;
    };
    if (!p.positionalArguments().isEmpty())
        return fail(QStringLiteral("unexpected argument: %1").arg(p.positionalArguments().first()));
    config.address = p.value(address);
    config.allowAnyAddress = p.isSet(anyAddress);
    if (!Socket::isIpv4(config.address))
        return fail(QStringLiteral("--address: not an IPv4 address: %1").arg(config.address));
    if (!config.allowAnyAddress && !Socket::isLoopback(config.address))
        return fail(QStringLiteral("--address %1 is not a loopback address; add --allow-any-address to use it")
                        .arg(config.address));
    if (!p.isSet(stateDir) || p.value(stateDir).isEmpty())
        return fail(QStringLiteral("--state-dir is required"));
    config.stateDir = p.value(stateDir);

    int tcp = 0, udp = 0;
    if (!toInt(p.value(port), 0, 65535, tcp) || !toInt(p.value(udpPort), 0, 65535, udp))
        return fail(QStringLiteral("ports are 0..65535"));
    if (!toInt(p.value(httpPort), -1, 65535, config.httpPort))
        return fail(QStringLiteral("--http-port is -1..65535"));
    config.tcpPort = quint16(tcp);
    config.udpPort = quint16(udp);
    if (!toInt(p.value(maxFailures), 1, 100, config.maxFailedLogins)
        || !toInt(p.value(lockSeconds), 0, 86400, config.lockSeconds)
        || !toInt(p.value(heartbeat), 10, 60000, config.heartbeatIntervalMs)
        || !toInt(p.value(timeout), 10, 600000, config.heartbeatTimeoutMs))
        return fail(QStringLiteral("a number is out of range (see --help)"));

    config.deviceId = p.value(deviceId);
    config.model = p.value(model);
    config.firmwareVersion = p.value(firmware);
    config.serial = p.value(serial);
    config.adminPassword = p.value(password);
    config.factoryNew = p.isSet(factoryNew);
    return true;
}

} // namespace vdec
