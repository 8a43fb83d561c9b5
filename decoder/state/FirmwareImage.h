#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace vdec {

// A firmware image as the unit takes it: the 8 bytes "KVFWIMG1", the version as a
// NUL-terminated text of 1..31 printable ASCII bytes, then any payload.
class FirmwareImage {
public:
    static constexpr char kMagic[] = "KVFWIMG1";
    static constexpr size_t kMagicSize = 8;
    static constexpr size_t kMaxVersion = 31;

    // CMATRIX_OK with the version, or CMATRIX_ERR_FIRMWARE.
    static int32_t parse(const std::vector<uint8_t>& image, std::string& version);
};

} // namespace vdec
