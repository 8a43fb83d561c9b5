#include "FirmwareImage.h"

#include "CMatrixSDK.h"

#include <algorithm>
#include <cstring>

namespace vdec {

int32_t FirmwareImage::parse(const std::vector<uint8_t>& image, std::string& version)
{
    if (image.size() < kMagicSize + 2 || std::memcmp(image.data(), kMagic, kMagicSize) != 0)
        return CMATRIX_ERR_FIRMWARE;
    const auto begin = image.begin() + kMagicSize;
    const auto end = image.size() - kMagicSize > kMaxVersion ? begin + kMaxVersion + 1 : image.end();
    const auto nul = std::find(begin, end, uint8_t(0));
    if (nul == end || nul == begin)
        return CMATRIX_ERR_FIRMWARE;
    // Shown to operators and reported by discovery: printable ASCII only.
    if (!std::all_of(begin, nul, [](uint8_t c) { return c >= 0x20 && c < 0x7f; }))
        return CMATRIX_ERR_FIRMWARE;
    version.assign(begin, nul);
    return CMATRIX_OK;
}

} // namespace vdec
