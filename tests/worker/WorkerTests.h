#pragma once

// The real worker, the real SDK and in-process virtual decoders on 127.0.0.130 to 159. The
// worker is a process-wide singleton whose thread starts once, so the slots run in the order
// declared below: the first needs a worker that has never been started, the last stops it.
// Every slot uses decoders of its own and leaves the connection registry empty.

#include "MatrixSdkWorker.h"

#include "DecoderFixture.h"
#include "QueuedSignalSpy.h"
#include "SignalRecorder.h"

#include <QObject>
#include <QSharedPointer>
#include <QTemporaryDir>

class TestWorker : public QObject {
    Q_OBJECT

public:
    using Handle = QSharedPointer<kvms_matrix::CSharedHandle>;

    static kvms_matrix::MatrixSdkWorker* worker();
    static kvms_matrix::MatrixInfo infoOf(const vdec::VirtualDecoder* decoder, const QString& password = "admin123");
    // A connection of the test's own, made with the SDK directly, not through the worker.
    static Handle rawConnection(const vdec::VirtualDecoder* decoder);

private:
    // Connects through the worker and waits for the result; null on a failed login or timeout.
    Handle connectWorker(const vdec::VirtualDecoder* decoder, int* ret = nullptr);

    kvmstest::DecoderFixture fixture_;
    QTemporaryDir dir_;

private slots:
    void initTestCase();
    void cleanup();

    // TestQueue.cpp
    void operationsBeforeFirstConnectWaitForIt();
    void everySignalCanBeQueued();
    void tasksWithoutHandlerAreDropped_data();
    void tasksWithoutHandlerAreDropped();

    // TestConnections.cpp
    void connectingTwiceReplacesTheRegistryEntry();
    void failedLoginReportsBothSignals_data();
    void failedLoginReportsBothSignals();
    void lostDecoderIsReportedOnce_data();
    void lostDecoderIsReportedOnce();
    void hungDecoderHoldsTheWorkerBriefly();

    // TestMaintenance.cpp
    void resolution_data();
    void resolution();
    void passwordModify();
    void configurationLogsAndReset();
    void firmwareUpdate_data();
    void firmwareUpdate();

    // TestQueue.cpp, last: they end the worker's thread
    void quitQueuesOneDisconnectPerConnection();
    void queueIsDrainedAfterTheRunningFlagIsCleared();
};
