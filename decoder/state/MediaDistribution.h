#pragma once

#include <QString>

#include <cstdint>

namespace vdec {

// A stream a client pushes to the decoder for one of its local sources (a desktop,
// a replayed recording). Windows show it by binding a source whose main URL is `url`.
struct MediaDistribution {
    uint32_t id = 0;
    QString sourceName;
    int32_t channel = 0;
    QString url;
    // Counted as frames arrive; not saved.
    quint64 frames = 0;
    quint64 bytes = 0;
};

} // namespace vdec
