#include "PasswordPolicy.h"

#include <algorithm>
#include <cctype>

namespace vdec {

bool PasswordPolicy::accepts(const std::string& password)
{
    if (password.size() < kMinLength || password.size() > kMaxLength)
        return false;
    const auto is = [&password](int (*test)(int)) {
        return std::any_of(password.begin(), password.end(), [test](char c) { return test(uint8_t(c)) != 0; });
    };
    const bool printable = std::all_of(password.begin(), password.end(), [](char c) { return c > 0x20 && c < 0x7f; });
    return printable && is(isalpha) && is(isdigit);
}

} // namespace vdec
