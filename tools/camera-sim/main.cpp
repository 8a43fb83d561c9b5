// camera-sim: cameras on loopback for the demo and the tests. Each camera serves a
// main and a sub stream of H.264 over RTSP, looped from clips encoded once.
#include "CameraList.h"
#include "CameraServer.h"

#include <gst/gst.h>

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QTextStream>

namespace {

bool readSize(const QString& text, QSize& size)
{
    const QStringList parts = text.split(QLatin1Char('x'));
    if (parts.size() != 2)
        return false;
    const int w = parts[0].toInt(), h = parts[1].toInt();
    if (w < 64 || h < 64 || w > 3840 || h > 2160 || w % 2 || h % 2)
        return false;
    size = QSize(w, h);
    return true;
}

int fail(const QString& why)
{
    QTextStream(stderr) << "camera-sim: " << why << '\n';
    return 1;
}

} // namespace

int main(int argc, char** argv)
{
    gst_init(&argc, &argv);
    QCoreApplication app(argc, argv);
    QCommandLineParser p;
    p.setApplicationDescription(
        QStringLiteral("Serves cameras over RTSP on loopback: rtsp://<address>:<port>/ch<channel>/main and /sub "
                       "(also /<name>/main and /sub), H.264 at 25 pictures a second, looped from clips encoded once."));
    p.addHelpOption();
    p.addOptions({
        { "address", "Loopback address for --camera and --count cameras.", "ip", "127.0.0.1" },
        { "port", "RTSP port for --camera and --count cameras (0: any free port).", "port", "8554" },
        { "camera", "A camera of this name (repeatable); channels count from 1.", "name" },
        { "count", "Cameras named \"Camera 01\"... up to this number.", "n" },
        { "cameras", "A file of \"<address> <port> <channel> <name>\" lines.", "file" },
        { "corrupt", "This camera sends damaged pictures (repeatable).", "name" },
        { "clip-dir", "Where clips are encoded and kept (default: the user's cache).", "dir" },
        { "clip-seconds", "Length of each clip (1..60).", "s", "10" },
        { "main-size", "Picture size of the main streams.", "WxH", "1920x1080" },
        { "sub-size", "Picture size of the sub streams.", "WxH", "640x360" },
        { "exit-with-stdin", "Stop when standard input closes (for a parent process)." },
    });
    p.process(app);

    SimSettings s;
    s.clipDir = p.value("clip-dir");
    s.clipSeconds = p.value("clip-seconds").toInt();
    if (s.clipSeconds < 1 || s.clipSeconds > 60)
        return fail(QStringLiteral("--clip-seconds must be 1..60"));
    if (!readSize(p.value("main-size"), s.mainSize) || !readSize(p.value("sub-size"), s.subSize))
        return fail(QStringLiteral("sizes are WxH, even, 64x64..3840x2160"));
    QString error;
    if (p.isSet("cameras") && !CameraList::readFile(p.value("cameras"), s.cameras, &error))
        return fail(error);
    QStringList names = p.values("camera");
    for (int i = 1; i <= p.value("count").toInt() && i <= 256; ++i)
        names << QStringLiteral("Camera %1").arg(i, 2, 10, QLatin1Char('0'));
    const QString address = p.value("address");
    bool portOk = false;
    const uint port = p.value("port").toUInt(&portOk);
    if (!CameraList::isLoopback(address) || !portOk || port > 65535)
        return fail(QStringLiteral("cameras listen on a loopback address and a port 0..65535"));
    int channel = 1;
    for (const QString& name : names)
        s.cameras.append(SimCamera { address, quint16(port), channel++, name, false });
    if (s.cameras.isEmpty())
        return fail(QStringLiteral("no cameras: give --camera, --count or --cameras"));
    for (SimCamera& c : s.cameras)
        c.corrupt = p.values("corrupt").contains(c.name);

    CameraServer server;
    if (!server.prepare(s, &error))
        return fail(error);
    QTextStream out(stdout);
    for (const QString& line : server.describe())
        out << line << '\n';
    out << "camera-sim: ready" << Qt::endl;
    server.run(p.isSet("exit-with-stdin"));
    return 0;
}
