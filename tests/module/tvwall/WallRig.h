#pragma once

// What the TV wall test classes share: the worker suite's working directory, virtual decoders
// on pool addresses, and a wall laid through the test's own SDK connection before the worker
// acts on it. Each test leaves the connection registry empty.

#include "MatrixSdkWorker.h"

#include "DecoderFixture.h"
#include "SdkSession.h"
#include "WorkerSuite.h"

#include <QList>

#include <memory>

class WallRig : public kvmstest::WorkerSuite {
public:
    vdec::VirtualDecoder* startDecoder(const kvmstest::DecoderFixture::Tweak& tweak = {});
    // Starts decoder_, lays a wall of rows x cols cells (one window per cell) through sdk_ and
    // connects the worker; null on any failure.
    Handle wallOn(int rows, int cols);
    // The wall as the worker reads it (getWindowInfo), with the rows and columns it reports.
    static QList<kvms_matrix::MatrixWindowInfo> readWall(
        const Handle& handle, int* rows = nullptr, int* cols = nullptr);
    // Binds `window` through the worker and returns the result signal's ret.
    static int bind(const Handle& handle, const kvms_matrix::MatrixWindowInfo& window, int subWindowId,
        kvms_matrix::MatrixWindowInfo* echoed = nullptr);

protected:
    bool settle(); // for cleanup: the worker settled, every decoder stopped

    kvmstest::DecoderFixture fixture_;
    vdec::VirtualDecoder* decoder_ = nullptr;
    std::unique_ptr<kvmstest::SdkSession> sdk_;
};
