#pragma once

#include "CMatrixSDK.h"

#include <QString>
#include <QTemporaryDir>

#include <cstdint>
#include <memory>
#include <vector>

namespace vdec {
class VirtualDecoder;
}

// An in-process virtual decoder on 127.0.0.99 whose 2x2 wall holds one window of
// 16 sub-windows (960x540 pixels each), every one bound to a media distribution of
// its own, fed through the real SDK by a sender thread per distribution.
class IngestRig {
public:
    static constexpr int kStreams = 16;

    struct Result {
        int frames = 0; // answered OK
        int failures = 0;
        int late = 0; // paced frames skipped because their sender was behind
        double seconds = 0; // wall-clock time of the run
        double cpuSeconds = 0; // of the whole process (senders and decoder)
        quint64 decoded = 0; // pictures the decoder decoded, from its counters
    };

    IngestRig(bool decodeAtShownSize, int pictureIntervalMs);
    ~IngestRig();
    IngestRig(const IngestRig&) = delete;
    IngestRig& operator=(const IngestRig&) = delete;

    const QString& error() const { return error_; }
    // Each sender sends `fps` frames a second (0: as fast as it is answered) for `seconds`.
    Result run(const std::vector<uint8_t>& frame, double fps, double seconds);

private:
    bool setUp();
    quint64 decodedSoFar() const;

    QTemporaryDir dir_;
    std::unique_ptr<vdec::VirtualDecoder> decoder_;
    CMHANDLE handle_ = nullptr;
    std::vector<CMMDHANDLE> streams_;
    QString error_;
};
