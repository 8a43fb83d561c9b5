#pragma once

#include "WallOverlays.h"

#include <QJsonObject>

namespace vdec {

struct DecoderConfig;
struct DecoderSnapshot;

// The decoder's state as the monitor serves it: identity, grid, windows with their
// sub-windows, sources and media counters, distributions and the banner (shown or
// not). Passwords are left out.
class SnapshotJson {
public:
    static QJsonObject toJson(
        const DecoderConfig& config, const DecoderSnapshot& snapshot, const WallOverlays& overlays, int clients);
};

} // namespace vdec
