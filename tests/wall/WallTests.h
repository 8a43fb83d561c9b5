#pragma once

#include "DecoderFixture.h"
#include "SdkSession.h"

#include <QObject>

#include <memory>

// What the worker-level suites cannot reach of scenes, loops, banner, inputs, colours and
// audio: the decoder's refusals, its loop clock and a power cycle. The real SDK against
// in-process virtual decoders on 127.0.0.60..79.
class WallTests : public QObject {
    Q_OBJECT

private slots:
    void cleanup();
    void cleanupTestCase();

    // TestLoops.cpp
    void loopTurnsAtItsInterval();

    // TestValidation.cpp
    void refusedRequests_data();
    void refusedRequests();

    // TestRestart.cpp
    void restartKeepsEverything();

private:
    // A running decoder on 127.0.0.n with the standard wall, and sdk logged in to it:
    // a 2 x 2 grid; window 1 (a quarter, division 4, cam-1 in 1 and cam-3 in 3),
    // floating window 2, window 3 (a quarter, division 1); scheme 1 of six sources
    // ("loop-0".."loop-5", interval 1); loops turn every 40 ms a second.
    vdec::VirtualDecoder* standardWall(int n, kvmstest::SdkSession& sdk, int turnUnitMs = 40)
    {
        return standardWall(fixture_, n, sdk, turnUnitMs);
    }
    static vdec::VirtualDecoder* standardWall(
        kvmstest::DecoderFixture& fixture, int n, kvmstest::SdkSession& sdk, int turnUnitMs);

    kvmstest::DecoderFixture fixture_;
    // One decoder for all refused requests: each leaves it as it was.
    kvmstest::DecoderFixture validationFixture_;
    std::unique_ptr<kvmstest::SdkSession> validationSdk_;
    vdec::VirtualDecoder* validationDecoder_ = nullptr;
};
