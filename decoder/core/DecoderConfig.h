#pragma once

#include <QString>
#include <QVector>

namespace vdec {

// Everything a decoder is started with. Identity and the initial password only
// matter on first boot: once the state directory holds accounts, they win.
struct DecoderConfig {
    QString address = QStringLiteral("127.0.0.1");
    quint16 tcpPort = 0; // 0: ephemeral
    quint16 udpPort = 0; // discovery; 0: ephemeral
    QString stateDir; // empty: state is kept in memory only

    QString deviceId = QStringLiteral("VD00000001");
    QString model = QStringLiteral("VD-1600");
    QString firmwareVersion = QStringLiteral("V1.0.0 build 240101");
    QString serial = QStringLiteral("SN000000000001");
    bool factoryNew = false;

    QString adminUser = QStringLiteral("admin");
    QString adminPassword = QStringLiteral("admin123");
    int maxFailedLogins = 5;
    int lockSeconds = 600;

    // Clients take 900 ms of silence for a hung unit: heartbeats go out well within that. The
    // unit itself is patient with a silent client.
    int heartbeatIntervalMs = 200;
    int heartbeatTimeoutMs = 4000;
    int maxConnections = 64;

    int httpPort = 0; // monitor page; 0: ephemeral, negative: no monitor
    // Still pictures are decoded at the size they are shown at; false decodes them
    // whole and scales afterwards (kept to measure the difference).
    bool decodeAtShownSize = true;
    // A sub-window decodes at most one picture per interval; pictures in between are
    // kept compressed and only the latest is decoded when the wall is looked at.
    // 0 decodes every picture on arrival.
    int pictureIntervalMs = 200;

    // One second of a loop's interval, in ms: tests shorten it to see loops turn quickly.
    int turnUnitMs = 1000;
    // The unit's HDMI inputs (at most 4), numbered from 0, and whether a cable is in each.
    QVector<bool> hdmiInputs = { true, false };

    // A camera is shown in one sub-window of the wall at a time; a second binding is refused.
    bool uniqueCameras = true;

    // Time between two firmware progress reports (0, 10, ..., 100): a whole upgrade
    // takes about eleven of them. Tests shorten it.
    int firmwareStepMs = 100;

    // The demo and the tests stay on loopback; anything else must be asked for.
    bool allowAnyAddress = false;
};

} // namespace vdec
