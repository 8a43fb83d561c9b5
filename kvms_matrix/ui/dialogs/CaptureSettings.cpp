#include "CaptureSettings.h"

#include <QFile>
#include <QHostAddress>
#include <QHostInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QSaveFile>

namespace kvms_matrix {

namespace {

constexpr int kDeviceIdBytes = 31;

QString pathOr(const QString& path)
{
    return path.isEmpty() ? QString::fromLatin1(CaptureSettings::kFileName) : path;
}

} // namespace

const char* const CaptureSettings::kFileName = "captureSettings.json";

CaptureSettings CaptureSettings::load(const QString& path)
{
    CaptureSettings settings;
    QFile file(pathOr(path));
    if (!file.open(QIODevice::ReadOnly) || file.size() > 64 * 1024)
        return settings;
    const QJsonObject o = QJsonDocument::fromJson(file.readAll()).object();
    settings.sending
        = o.value(QStringLiteral("sending")).toString() == QLatin1String("stream") ? Sending::Stream : Sending::Direct;
    settings.label = o.value(QStringLiteral("label")).toString().left(kMaxLabel);
    settings.streamAddress = o.value(QStringLiteral("streamAddress")).toString().left(15);
    settings.askEachTime = o.value(QStringLiteral("askEachTime")).toBool(true);
    return settings;
}

bool CaptureSettings::save(const QString& path) const
{
    QJsonObject o;
    o.insert(
        QStringLiteral("sending"), sending == Sending::Stream ? QStringLiteral("stream") : QStringLiteral("direct"));
    o.insert(QStringLiteral("label"), label);
    o.insert(QStringLiteral("streamAddress"), streamAddress);
    o.insert(QStringLiteral("askEachTime"), askEachTime);
    QSaveFile file(pathOr(path));
    return file.open(QIODevice::WriteOnly) && file.write(QJsonDocument(o).toJson()) >= 0 && file.commit();
}

QString CaptureSettings::effectiveLabel() const
{
    const QString text = label.trimmed();
    return (text.isEmpty() ? QHostInfo::localHostName() : text).left(kMaxLabel);
}

bool CaptureSettings::streamAddressValid() const
{
    // Four dotted numbers: the resolver's short forms ("127.1") would reach another host than meant.
    static const QRegularExpression dotted(QStringLiteral("^\\d{1,3}(\\.\\d{1,3}){3}$"));
    QHostAddress address;
    return dotted.match(streamAddress).hasMatch() && address.setAddress(streamAddress)
        && address.protocol() == QAbstractSocket::IPv4Protocol;
}

MatrixDeviceInfo CaptureSettings::source(int windowId, int subWindowId) const
{
    const bool stream = sending == Sending::Stream;
    const QString prefix = stream ? QStringLiteral("caponvif_") : QStringLiteral("cap_");
    const QString tail = QStringLiteral("_%1_%2").arg(windowId).arg(subWindowId);
    // The id goes out in the local 8-bit encoding: only plain letters and digits of the label.
    QString idLabel = effectiveLabel();
    idLabel.replace(QRegularExpression(QStringLiteral("[^A-Za-z0-9-]")), QStringLiteral("-"));
    idLabel = idLabel.left(qMax(0, kDeviceIdBytes - prefix.size() - 1 - tail.size()));

    MatrixDeviceInfo device;
    device.deviceId = prefix + QLatin1Char('_') + idLabel + tail;
    device.displayName = prefix + QLatin1Char('_') + effectiveLabel() + tail;
    device.deviceName = device.displayName;
    device.channel = 0;
    if (stream) {
        // Pulled by the decoder from rtsp://address/0 (main) and /1 (sub).
        device.deviceType = 5;
        device.ip = streamAddress;
        device.streamIndex = 0;
    } else {
        device.deviceType = 4;
    }
    return device;
}

} // namespace kvms_matrix
