#include "PushOptions.h"

#include <QCommandLineParser>
#include <QRegularExpression>

bool PushOptions::parse(const QStringList& arguments, PushOptions& out, QString* error)
{
    QCommandLineParser p;
    p.setApplicationDescription(QStringLiteral(
        "Shows a JPEG picture in a sub-window of a decoder, binding a picture source to it, and sets the banner.\n"
        "A window that does not exist is made to cover the whole wall."));
    p.addHelpOption();
    const QCommandLineOption address("address", "Decoder address (loopback).", "ip");
    const QCommandLineOption port("port", "Decoder control port.", "port");
    const QCommandLineOption user("user", "User name.", "name", out.user);
    const QCommandLineOption password("password", "Password.", "password", out.password);
    const QCommandLineOption window("window", "Window id.", "id", QString::number(out.windowId));
    const QCommandLineOption sub("sub", "Sub-window number, from 1.", "n", QString::number(out.sub));
    const QCommandLineOption division(
        "division", "Division of a window made here.", "n", QString::number(out.division));
    const QCommandLineOption rect(
        "rect", "Place of a window made here, wall units (0..32768).", "x,y,w,h", QStringLiteral("0,0,32768,32768"));
    const QCommandLineOption floating("floating", "A window made here floats.");
    const QCommandLineOption grid("grid", "Set the wall's screens first.", "COLSxROWS");
    const QCommandLineOption picture("picture", "JPEG file to show (default: a generated test card).", "file");
    const QCommandLineOption name("name", "Name of the picture source.", "text", out.name);
    const QCommandLineOption banner("banner", "Banner text to show along the bottom of the wall.", "text");
    const QCommandLineOption hideBanner("hide-banner", "Hide the banner.");
    p.addOptions({ address, port, user, password, window, sub, division, rect, floating, grid, picture, name, banner,
        hideBanner });
    p.process(arguments);

    auto fail = [error](const QString& why) {
        *error = why;
        return false;
    };
    static const QRegularExpression loopback(QStringLiteral(R"(^127(\.(25[0-5]|2[0-4]\d|1?\d?\d)){3}$)"));
    if (!loopback.match(p.value(address)).hasMatch())
        return fail(QStringLiteral("--address must be a loopback address"));
    bool ok = false;
    const uint portValue = p.value(port).toUInt(&ok);
    if (!ok || portValue == 0 || portValue > 65535)
        return fail(QStringLiteral("--port is 1..65535"));
    out.address = p.value(address);
    out.port = quint16(portValue);
    out.user = p.value(user);
    out.password = p.value(password);
    out.windowId = p.value(window).toInt(&ok);
    if (!ok || out.windowId < 1)
        return fail(QStringLiteral("--window is a positive id"));
    out.sub = p.value(sub).toInt(&ok);
    if (!ok || out.sub < 1)
        return fail(QStringLiteral("--sub is 1 or more"));
    out.division = p.value(division).toInt(&ok);
    if (!ok)
        return fail(QStringLiteral("--division is a number"));
    const QStringList r = p.value(rect).split(QLatin1Char(','));
    if (r.size() != 4)
        return fail(QStringLiteral("--rect is x,y,w,h"));
    out.rect = QRect(r[0].toInt(), r[1].toInt(), r[2].toInt(), r[3].toInt());
    out.floating = p.isSet(floating);
    if (p.isSet(grid)) {
        const QStringList g = p.value(grid).split(QLatin1Char('x'));
        out.grid = g.size() == 2 ? QSize(g[0].toInt(), g[1].toInt()) : QSize();
        if (out.grid.isEmpty())
            return fail(QStringLiteral("--grid is COLSxROWS, as 3x2"));
    }
    out.picture = p.value(picture);
    out.name = p.value(name);
    out.banner = p.value(banner);
    out.hideBanner = p.isSet(hideBanner);
    return true;
}
