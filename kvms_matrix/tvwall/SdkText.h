#pragma once

#include <QString>

#include <cstddef>

namespace kvms_matrix {

// Texts in the SDK's fixed-size fields. Writing cuts a text that does not fit at a character
// boundary and always leaves the terminating NUL; reading stops at the field's end when a
// decoder filled it to the last byte.
class SdkText {
public:
    static void copy(char* field, size_t size, const QString& text);
    static QString read(const char* field, size_t size);
};

} // namespace kvms_matrix
