#pragma once

#include <string>

namespace vdec {

// What a new password must be: 8 to 31 bytes (it travels in 32-byte fields), with at
// least one letter and one digit, printable ASCII without spaces.
class PasswordPolicy {
public:
    static constexpr size_t kMinLength = 8;
    static constexpr size_t kMaxLength = 31;

    static bool accepts(const std::string& password);
};

} // namespace vdec
