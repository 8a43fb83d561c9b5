#pragma once

// What the TV wall test classes share: the worker suite's working directory, a virtual decoder
// on a pool address, and the test's own SDK connection to it (sdk_), through which a wall is
// laid before the worker acts on it. Each test leaves the connection registry empty.

#include "MatrixSdkWorker.h"

#include "DecoderFixture.h"
#include "SdkSession.h"
#include "WorkerSuite.h"

#include <QList>
#include <QStringList>

#include <memory>

class WallRig : public kvmstest::WorkerSuite {
public:
    // The wall as the worker reads it (getWindowInfo), with the rows and columns it reports.
    static QList<kvms_matrix::MatrixWindowInfo> readWall(
        const Handle& handle, int* rows = nullptr, int* cols = nullptr);
    // Binds `window` through the worker and returns the result signal's ret.
    static int bind(const Handle& handle, const kvms_matrix::MatrixWindowInfo& window, int subWindowId,
        kvms_matrix::MatrixWindowInfo* echoed = nullptr);

protected:
    vdec::VirtualDecoder* startDecoder(const kvmstest::DecoderFixture::Tweak& tweak = {});
    // Starts decoder_, connects sdk_ and the worker to it; null on any failure.
    Handle decoderOn(const kvmstest::DecoderFixture::Tweak& tweak = {});
    // decoderOn() with a wall of rows x cols cells, one window per cell.
    Handle wallOn(int rows, int cols);
    // Through sdk_: a window over cell `id` of a 2 x 2 wall, row by row.
    int addCell(uint32_t id, int division = 1);
    int bindRaw(int windowId, int subWindow, const char* devId);
    // A scheme of kind 4 with one source per id; an empty id stands for an empty slot.
    int createScheme(uint32_t id, const char* name, const QStringList& sourceIds = {});
    bool settle(); // for cleanup: the worker settled, every decoder stopped

    kvmstest::DecoderFixture fixture_;
    vdec::VirtualDecoder* decoder_ = nullptr;
    std::unique_ptr<kvmstest::SdkSession> sdk_;
};
