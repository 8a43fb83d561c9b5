#include "SdkText.h"

#include <QByteArray>

#include <algorithm>
#include <cstring>

namespace kvms_matrix {

void SdkText::copy(char* field, size_t size, const QString& text)
{
    if (!field || size == 0)
        return;
    std::memset(field, 0, size);
    const QByteArray bytes = text.toUtf8();
    size_t length = std::min(size_t(bytes.size()), size - 1);
    // Never leave half a multi-byte character at the cut: step back over continuation bytes.
    if (length < size_t(bytes.size())) {
        while (length > 0 && (uchar(bytes.at(int(length))) & 0xC0) == 0x80)
            --length;
    }
    std::memcpy(field, bytes.constData(), length);
}

QString SdkText::read(const char* field, size_t size)
{
    if (!field)
        return QString();
    return QString::fromUtf8(field, int(strnlen(field, size)));
}

} // namespace kvms_matrix
