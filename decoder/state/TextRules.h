#pragma once

#include <QString>

#include <cstring>
#include <string>

namespace vdec {

// Checks on texts that arrive in fixed-size SDK fields or as wire strings.
class TextRules {
public:
    // A fixed-size field must hold its terminator, or the decoder would read past it.
    static bool isTerminated(const char* text, size_t size) { return memchr(text, '\0', size) != nullptr; }

    static bool isUtf8(const std::string& text) { return QString::fromStdString(text).toStdString() == text; }

    // A name the operator can see: 1..maxBytes bytes of UTF-8, no NUL inside.
    static bool isName(const std::string& text, size_t maxBytes)
    {
        return !text.empty() && text.size() <= maxBytes && text.find('\0') == std::string::npos && isUtf8(text);
    }

    // The same for a name held in a fixed-size field.
    static bool isFieldName(const char* field, size_t size)
    {
        return isTerminated(field, size) && isName(std::string(field), size - 1);
    }
};

} // namespace vdec
