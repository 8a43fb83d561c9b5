#pragma once

// Windows, layout and signal sources end to end: the real worker, the real SDK and in-process
// virtual decoders on 127.0.0.230 to 249. Each slot uses decoders of its own and leaves the
// connection registry empty. The worker's INI mirror and the call log live in a temporary
// working directory.

#include "MatrixSdkWorker.h"

#include "DecoderFixture.h"
#include "SdkSession.h"
#include "WorkerSuite.h"

#include <QObject>
#include <QSharedPointer>
#include <QTemporaryDir>

#include <memory>

class TvWallWindowsTest : public QObject, public kvmstest::WorkerSuite {
    Q_OBJECT

private:
    vdec::VirtualDecoder* startDecoder(int host);
    // Starts decoder_ on 127.0.0.host, lays a wall of rows x cols cells (one window per cell)
    // through the test's own connection sdk_, and connects the worker; null on any failure.
    Handle wallOn(int host, int rows, int cols);
    // The wall as the worker reads it (getWindowInfo), with the rows and columns it reports.
    static QList<kvms_matrix::MatrixWindowInfo> readWall(
        const Handle& handle, int* rows = nullptr, int* cols = nullptr);
    // Binds `window` through the worker and returns the result signal's ret.
    static int bind(const Handle& handle, const kvms_matrix::MatrixWindowInfo& window, int subWindowId,
        kvms_matrix::MatrixWindowInfo* echoed = nullptr);

    kvmstest::DecoderFixture fixture_;
    vdec::VirtualDecoder* decoder_ = nullptr;
    std::unique_ptr<kvmstest::SdkSession> sdk_;

private slots:
    void initTestCase();
    void cleanup();
    void cleanupTestCase();

    // TestReading.cpp
    void windowsReadBack_data();
    void windowsReadBack();
    void readingIsLogged();

    // TestWindows.cpp
    void addWindow_data();
    void addWindow();
    void removingASplicedWindowGivesItsCellsBack();
    void split_data();
    void split();
    void clearingOneSubWindowRewritesTheOthers();
    void clearingAWholeWindowStopsItsLoop();
    void fullScreenAndMove();
    void withoutUsableConnection_data();
    void withoutUsableConnection();

    // TestSources.cpp
    void sourceDescriptors_data();
    void sourceDescriptors();
    void displayDeviceGetsADistribution();
    void pictureIsPushedToItsSubWindow_data();
    void pictureIsPushedToItsSubWindow();
    void distributionEndsWithItsBinding_data();
    void distributionEndsWithItsBinding();

    // TestHostile.cpp
    void extremeAnswers_data();
    void extremeAnswers();
    void hostileDecoderStaysBounded();

    // TestLayout.cpp
    void newLayoutStartsCleanAndReadsBack();
    void layoutWithinWhatTheDecoderHolds_data();
    void layoutWithinWhatTheDecoderHolds();
};
