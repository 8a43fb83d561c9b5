#include "KavByteOrder.h"

namespace kav {

namespace {

bool detectBigEndian()
{
    const std::uint32_t one = 1;
    unsigned char first;
    std::memcpy(&first, &one, 1);
    return first == 0;
}

} // namespace

const bool hostIsBigEndian = detectBigEndian();

} // namespace kav
