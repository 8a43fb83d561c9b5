#pragma once

#include "CMatrixSDK.h"

#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

namespace cmatrix::sdk {

// Discovery rounds, each on a thread of its own. A round sends the probe `probes`
// times, spread evenly over the round, to every target; reports each answer through
// the callback as it arrives (every answer datagram once: a decoder that answers
// all probes is reported for each, and telling them apart is the caller's business);
// and ends with one call with finished = true. A callback may start the next round.
class DiscoveryRound {
public:
    static constexpr int kMaxWaitCentis = 6000; // one minute
    static constexpr int kMaxProbes = 100;

    // Returns at once: CMATRIX_OK with the round under way, or a code when it could not start.
    static int start(int waitCentis, int probes, Discovery_SearchCallback callback, void* user);

private:
    struct Threads;
    static Threads& threads();
    static void run(int waitCentis, int probes, Discovery_SearchCallback callback, void* user);
};

} // namespace cmatrix::sdk
