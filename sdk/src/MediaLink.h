#pragma once

#include "Connection.h"
#include "WriteGate.h"

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>

namespace cmatrix::sdk {

class Session;

// One extra connection of a handle that carries media frames, so a large frame never
// holds up a control call. Opened and logged in on first use with the handle's
// credentials, and opened again if it was lost, as long as the handle is still on
// the connection it was on then (its media generation). Its loss is never reported:
// only the control connection speaks for the handle.
class MediaLink {
public:
    MediaLink() = default;
    MediaLink(const MediaLink&) = delete;
    MediaLink& operator=(const MediaLink&) = delete;

    // Opening gives up at `until` (default: the handle's call timeout from now).
    int acquire(Session& session, uint64_t generation, std::shared_ptr<Connection>& out,
        std::optional<Clock::time_point> until = std::nullopt);
    void close();

private:
    // Held while opening, so concurrent first users open it once. A gate rather than a timed
    // mutex: its deadline is waited for on a condition variable, which ThreadSanitizer follows
    // (it does not see a timed mutex's clock-based lock).
    WriteGate gate_;
    std::shared_ptr<Connection> connection_; // read and changed only inside the gate
};

} // namespace cmatrix::sdk
