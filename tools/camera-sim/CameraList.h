#pragma once

#include <QList>
#include <QSize>
#include <QString>

// The cameras one simulator serves. Each is reached as
//   rtsp://<address>:<port>/ch<channel>/main   and   .../sub
// and also by name, rtsp://<address>:<port>/<name>/main and /sub.
struct SimCamera {
    QString address = QStringLiteral("127.0.0.1");
    quint16 port = 8554;
    int channel = 1;
    QString name;
    bool corrupt = false; // sends damaged pictures, to test decoders with
};

struct SimSettings {
    QList<SimCamera> cameras;
    QString clipDir;
    int clipSeconds = 10;
    QSize mainSize { 1920, 1080 };
    QSize subSize { 640, 360 };
};

class CameraList {
public:
    // Reads "address port channel name..." lines; '#' starts a comment. False, with a
    // reason, on a line that does not read.
    static bool readFile(const QString& path, QList<SimCamera>& cameras, QString* error);
    // A name safe for a URL path and a file name: letters, digits, '-' and '_'.
    static QString slug(const QString& name);
    // True for an address the simulator may listen on (loopback only).
    static bool isLoopback(const QString& address);
};
