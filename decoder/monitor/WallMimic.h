#pragma once

#include <QByteArray>

namespace vdec {

struct DecoderSnapshot;

// The whole wall as one JPEG of an exact size, for a client's live mimic of it: drawn
// as the monitor draws it, then fitted to the size asked (the client lays its own
// panels over the same wall units). Sizes are those the SDK allows.
class WallMimic {
public:
    static constexpr int kMinSide = 16;
    static constexpr int kMaxWidth = 3840, kMaxHeight = 2160;
    static constexpr int kQuality = 80;

    static bool acceptable(int width, int height);
    // Empty for a size that is not acceptable.
    static QByteArray jpeg(const DecoderSnapshot& snapshot, int width, int height);
};

} // namespace vdec
