#include "CameraList.h"

#include <QFile>
#include <QHostAddress>
#include <QRegularExpression>
#include <QTextStream>

bool CameraList::readFile(const QString& path, QList<SimCamera>& cameras, QString* error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        *error = QStringLiteral("cannot read %1").arg(path);
        return false;
    }
    QTextStream in(&file);
    int lineNo = 0;
    while (!in.atEnd()) {
        const QString line = in.readLine().section(QLatin1Char('#'), 0, 0).trimmed();
        ++lineNo;
        if (line.isEmpty())
            continue;
        const QStringList parts = line.split(QRegularExpression(QStringLiteral("\\s+")));
        bool portOk = false, channelOk = false;
        SimCamera c;
        if (parts.size() >= 4) {
            c.address = parts[0];
            c.port = quint16(parts[1].toUInt(&portOk));
            c.channel = parts[2].toInt(&channelOk);
            c.name = parts.mid(3).join(QLatin1Char(' '));
        }
        if (!portOk || c.port == 0 || !channelOk || c.channel < 1 || !isLoopback(c.address)) {
            *error = QStringLiteral("%1:%2: expected \"<loopback address> <port> <channel> <name>\"")
                         .arg(path)
                         .arg(lineNo);
            return false;
        }
        cameras.append(c);
    }
    return true;
}

QString CameraList::slug(const QString& name)
{
    QString out;
    for (const QChar c : name) {
        if ((c >= QLatin1Char('a') && c <= QLatin1Char('z')) || (c >= QLatin1Char('A') && c <= QLatin1Char('Z'))
            || (c >= QLatin1Char('0') && c <= QLatin1Char('9')) || c == QLatin1Char('-') || c == QLatin1Char('_'))
            out += c;
        else
            out += QLatin1Char('_');
    }
    return out.isEmpty() ? QStringLiteral("camera") : out.left(48);
}

bool CameraList::isLoopback(const QString& address)
{
    QHostAddress a;
    return a.setAddress(address) && a.protocol() == QAbstractSocket::IPv4Protocol && a.isLoopback();
}
