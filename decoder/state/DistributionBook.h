#pragma once

#include "MediaDistribution.h"

#include <QJsonArray>

#include <string>
#include <vector>

namespace vdec {

// The media distributions the decoder holds. Ids are never reused, not even across
// a restart, so a client holding a stale id is told so instead of reaching another
// stream. Methods return a CMATRIX code; nothing changes on error.
class DistributionBook {
public:
    static constexpr int kMaxDistributions = 64;
    static constexpr int kMaxNameBytes = 31; // fits DeviceInfo_t::devId with its NUL

    // Starts one for (sourceName, channel), or hands back the one already started for
    // that pair, so a client that restarted finds its stream again.
    int32_t start(const std::string& sourceName, int32_t channel, const QString& decoderIp, MediaDistribution& out);
    int32_t stop(uint32_t id);

    const MediaDistribution* find(uint32_t id) const;
    MediaDistribution* find(uint32_t id);
    const std::vector<MediaDistribution>& all() const { return items_; }
    void clear() { items_.clear(); }

    QJsonArray toJson() const;
    // Entries that do not parse are dropped; the id counter never goes backwards.
    void fromJson(const QJsonArray& array, uint32_t lastId);
    uint32_t lastId() const { return lastId_; }

    static QString urlOf(const QString& decoderIp, uint32_t id);

private:
    std::vector<MediaDistribution> items_; // in start order
    uint32_t lastId_ = 0;
};

} // namespace vdec
