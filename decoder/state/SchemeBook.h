#pragma once

#include "Scheme.h"

#include <cstdint>
#include <map>
#include <vector>

namespace vdec {

// The display-in-turn schemes the decoder stores, by id. Changes are validated
// first and applied whole, or not at all; the result is a CMATRIX code.
class SchemeBook {
public:
    static constexpr int kMaxSchemes = 64;
    static constexpr int kMaxDevices = 256;
    static constexpr uint32_t kMaxInterval = 86400; // a day, in seconds
    static constexpr int32_t kMaxKind = 4;

    // Adds a scheme, or replaces the record of an existing one (its sources stay).
    int32_t set(const SchemeInfo_t& info);
    // Deletes every id listed, or none when any is unknown.
    int32_t remove(const std::vector<uint32_t>& ids);
    // Appends sources (after dropping the old ones when reset); indexes are renumbered.
    int32_t addDevices(uint32_t id, const std::vector<SchemeDevice_t>& devices, bool reset);

    const Scheme* find(uint32_t id) const;
    std::vector<SchemeInfo_t> list() const; // in id order
    const std::map<uint32_t, Scheme>& schemes() const { return schemes_; }

    // Takes schemes read back from disk, dropping any that would not pass validation.
    int restore(std::vector<Scheme> schemes);

private:
    static int32_t checkInfo(const SchemeInfo_t& info);
    static bool isDevice(const SchemeDevice_t& device);

    std::map<uint32_t, Scheme> schemes_;
};

} // namespace vdec
