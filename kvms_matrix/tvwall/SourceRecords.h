#pragma once

#include "MatrixDeviceInfo.h"
#include "MatrixSubWindowInfo.h"

#include "CMatrixSDK.h"

#include <QByteArray>
#include <QList>
#include <QString>

namespace kvms_matrix {

// How the module's source records and the SDK's device descriptors map onto each other where
// no connection is needed: what kind of source a descriptor is, what the interface shows for
// it, and the small rules shared by the conversions.
class SourceRecords {
public:
    // Protocol numbers of DeviceInfo_t as the module uses them.
    enum Protocol { LetterCamera = 0, OtherCamera = 1, Onvif = 2, Rtsp = 3, Local = 6, Distributed = 7, Empty = 8 };

    // The module's device type of a descriptor the decoder reported.
    static int typeOf(int protocol, const QString& deviceId);
    static MatrixDeviceInfo deviceOf(const DeviceInfo_t& descriptor);
    // What the interface shows for a source of this type (0 nothing particular).
    static int sourceStateOf(int deviceType);
    // One sub-window per division; `devices` already padded to the division. Windows that are
    // not floating number their sub-windows from 1.
    static QList<MatrixSubWindowInfo> subWindowsOf(const QList<MatrixDeviceInfo>& devices, int division, bool numbered);
    // A host camera whose id (up to the first '&') starts with a Latin letter is fetched with
    // protocol 0, any other with protocol 1.
    static bool hasLetterPrefix(const QString& deviceId);
    // Stream index as a camera descriptor carries it: 0, 1 or -1.
    static int cameraStream(int streamIndex);
    // The device id field as the module writes it (local 8-bit, cut to leave the NUL).
    static QByteArray deviceIdBytes(const QString& deviceId);
    // The id as the decoder will keep it (deviceIdBytes read back), for ids the page makes up.
    static QString fittedDeviceId(const QString& deviceId);
    // A text in the local 8-bit encoding, cut to fit a field of `fieldSize` bytes with its NUL.
    static QByteArray local8Bit(const QString& text, size_t fieldSize);
    static void copyDeviceId(DeviceInfo_t& descriptor, const QString& deviceId);
    // The device list of one window as the call log writes it.
    static QString listJson(int windowId, const QList<MatrixDeviceInfo>& devices);
};

} // namespace kvms_matrix
