#pragma once

#include "TestClient.h"
#include "core/VirtualDecoder.h"

#include <QTemporaryDir>

#include <functional>
#include <memory>
#include <vector>

namespace kvmstest {

// Virtual decoders and clients for one test, each decoder on its own loopback
// address with an ephemeral port and a fresh state directory. Everything started
// here is stopped and removed by cleanup() (call it from the test's cleanup slot)
// or by the destructor.
class DecoderFixture {
public:
    using Tweak = std::function<void(vdec::DecoderConfig&)>;

    DecoderFixture() = default;
    ~DecoderFixture();
    DecoderFixture(const DecoderFixture&) = delete;
    DecoderFixture& operator=(const DecoderFixture&) = delete;

    // A running decoder on 127.0.0.n, or with n = 0 on an address claimed from LoopbackPool
    // (reused by this fixture after cleanup()); nullptr (with a warning) if it would not start.
    vdec::VirtualDecoder* startDecoder(int n = 0, const Tweak& tweak = {});
    // A connected client, logged in as admin unless login is false; nullptr on failure.
    TestClient* connectTo(vdec::VirtualDecoder* decoder, bool login = true);
    void cleanup();

private:
    std::vector<std::unique_ptr<TestClient>> clients_;
    std::vector<std::unique_ptr<vdec::VirtualDecoder>> decoders_;
    std::vector<std::unique_ptr<QTemporaryDir>> dirs_;
    std::vector<int> claimed_; // hosts claimed from LoopbackPool, the first claimedInUse_ taken
    size_t claimedInUse_ = 0;
};

} // namespace kvmstest
