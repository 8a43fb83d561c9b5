#include "SourceRecords.h"

#include "SdkText.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

#include <algorithm>
#include <cstring>

namespace kvms_matrix {

int SourceRecords::typeOf(int protocol, const QString& deviceId)
{
    if (protocol == Empty)
        return 0;
    if (protocol == Local) {
        if (deviceId.startsWith(QLatin1String("pic_")))
            return 3;
        if (deviceId.startsWith(QLatin1String("cap_")))
            return 4;
        if (deviceId.startsWith(QLatin1String("caponvif_")))
            return 5;
        return 2;
    }
    int type = 1; // a protocol the module does not know stays a camera, as a new record is
    if (protocol == Onvif)
        type = 8;
    else if (protocol == Distributed)
        type = 2;
    // These come last and win over the protocol.
    if (deviceId == QLatin1String("hdmiinput"))
        type = 6;
    else if (deviceId == QLatin1String("usbfileplay"))
        type = 7;
    else if (protocol == Rtsp)
        type = 9;
    return type;
}

MatrixDeviceInfo SourceRecords::deviceOf(const DeviceInfo_t& d)
{
    MatrixDeviceInfo device;
    const QString id = QString::fromLocal8Bit(d.devId, int(strnlen(d.devId, sizeof d.devId)));
    device.deviceType = typeOf(d.protocol, id);
    const bool hostId = d.protocol == LetterCamera || d.protocol == OtherCamera || d.protocol == Distributed;
    device.deviceId = hostId ? id.section(QLatin1Char('&'), 0, 0) : id;
    device.deviceName = SdkText::read(d.name, sizeof d.name);
    // Display devices and pictures are sent under their display name: keep it, so that writing
    // the window's sources back (clearing a neighbour) does not blank their names.
    if (device.deviceType >= 2 && device.deviceType <= 4)
        device.displayName = device.deviceName;
    device.ip = SdkText::read(d.ip, sizeof d.ip);
    device.userName = SdkText::read(d.userName, sizeof d.userName);
    device.password = SdkText::read(d.password, sizeof d.password);
    device.channel = d.channel;
    device.streamIndex = d.stream;
    device.port = d.port;
    device.mainUrl = SdkText::read(d.mainUrl, sizeof d.mainUrl);
    device.subUrl = SdkText::read(d.subUrl, sizeof d.subUrl);
    device.subWindowNumber = d.subWindow;
    return device;
}

int SourceRecords::sourceStateOf(int deviceType)
{
    switch (deviceType) {
    case 1:
    case 8:
        return 1;
    case 2:
        return 2;
    case 3:
        return 7;
    case 4:
        return 8;
    case 5:
        return 9;
    default:
        return 0;
    }
}

QList<MatrixSubWindowInfo> SourceRecords::subWindowsOf(
    const QList<MatrixDeviceInfo>& devices, int division, bool numbered)
{
    QList<MatrixSubWindowInfo> list;
    for (int k = 0; k < division; ++k) {
        MatrixSubWindowInfo sub;
        if (numbered) {
            sub.subWindowId = k + 1;
            sub.subWindowIndex = k;
        }
        if (k < devices.size()) {
            sub.device = devices.at(k);
            sub.sourceState = sourceStateOf(sub.device.deviceType);
        }
        list.append(sub);
    }
    return list;
}

bool SourceRecords::hasLetterPrefix(const QString& deviceId)
{
    static const QRegularExpression letters(QStringLiteral("^[A-Za-z]{1,3}.*$"));
    return letters.match(deviceId.section(QLatin1Char('&'), 0, 0)).hasMatch();
}

int SourceRecords::cameraStream(int streamIndex)
{
    return streamIndex == 0 || streamIndex == 1 || streamIndex == -1 ? streamIndex : -1;
}

QByteArray SourceRecords::deviceIdBytes(const QString& deviceId)
{
    return local8Bit(deviceId, sizeof(DeviceInfo_t::devId));
}

QString SourceRecords::fittedDeviceId(const QString& deviceId)
{
    return QString::fromLocal8Bit(deviceIdBytes(deviceId));
}

QByteArray SourceRecords::local8Bit(const QString& text, size_t fieldSize)
{
    const QByteArray bytes = text.toLocal8Bit();
    int length = std::min(bytes.size(), int(fieldSize) - 1);
    // Do not leave half a multi-byte character at the cut.
    while (length > 0 && length < bytes.size() && (uchar(bytes.at(length)) & 0xC0) == 0x80)
        --length;
    return bytes.left(length);
}

void SourceRecords::copyDeviceId(DeviceInfo_t& descriptor, const QString& deviceId)
{
    const QByteArray bytes = deviceIdBytes(deviceId);
    std::memset(descriptor.devId, 0, sizeof descriptor.devId);
    std::memcpy(descriptor.devId, bytes.constData(), size_t(bytes.size()));
}

QString SourceRecords::listJson(int windowId, const QList<MatrixDeviceInfo>& devices)
{
    QJsonArray list;
    for (const MatrixDeviceInfo& device : devices) {
        list.append(QJsonObject { { QStringLiteral("id"), device.deviceId },
            { QStringLiteral("name"), device.deviceName }, { QStringLiteral("ip"), device.ip } });
    }
    const QJsonObject top { { QStringLiteral("windowId"), windowId }, { QStringLiteral("deviceList"), list } };
    return QString::fromUtf8(QJsonDocument(top).toJson(QJsonDocument::Compact));
}

} // namespace kvms_matrix
