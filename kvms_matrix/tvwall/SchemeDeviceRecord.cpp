#include "SchemeDeviceRecord.h"

#include "SdkText.h"

#include <algorithm>
#include <cstring>

namespace kvms_matrix {

namespace {

// Field to field, both NUL-terminated and of possibly different sizes; the bytes are kept as
// they are (they may not be UTF-8).
template <size_t To, size_t From> void copyField(char (&to)[To], const char (&from)[From])
{
    const size_t length = std::min(strnlen(from, From), To - 1);
    std::memcpy(to, from, length);
    to[length] = '\0';
}

} // namespace

QString SchemeDeviceRecord::protocolName(int protocol)
{
    switch (protocol) {
    case 0:
        return QStringLiteral("kst1.0");
    case 1:
        return QStringLiteral("kst2.0");
    case 2:
        return QStringLiteral("onvif");
    case 3:
        return QStringLiteral("rtsp");
    case 7:
        return QStringLiteral("rtspPlayback");
    default:
        return QString();
    }
}

SchemeDevice_t SchemeDeviceRecord::fromDescriptor(const DeviceInfo_t& d)
{
    SchemeDevice_t record;
    std::memset(&record, 0, sizeof record);
    copyField(record.devId, d.devId);
    record.channel = d.channel;
    record.stream = d.stream;
    copyField(record.name, d.name);
    SdkText::copy(record.protocolName, sizeof record.protocolName, protocolName(d.protocol));
    copyField(record.ip, d.ip);
    record.port = d.port;
    copyField(record.mainUrl, d.mainUrl);
    copyField(record.subUrl, d.subUrl);
    copyField(record.userName, d.userName);
    copyField(record.password, d.password);
    record.mode = d.mode;
    return record;
}

} // namespace kvms_matrix
