#pragma once

// What the worker's test classes share: the process-wide worker, logins through it or past it,
// virtual decoders on pool addresses, and a directory for the call log. The worker's thread
// starts once per process, so the suite's main runs the classes in a fixed order: the queue's
// first (it needs a worker that has never started), the shutdown's last. Every test uses
// decoders of its own and leaves the connection registry empty.

#include "MatrixSdkWorker.h"

#include "DecoderFixture.h"
#include "QueuedSignalSpy.h"
#include "SignalRecorder.h"

#include <QSharedPointer>
#include <QStringList>
#include <QTemporaryDir>

class WorkerRig {
public:
    using Handle = QSharedPointer<kvms_matrix::CSharedHandle>;

    static kvms_matrix::MatrixSdkWorker* worker();
    static kvms_matrix::MatrixInfo infoOf(const vdec::VirtualDecoder* decoder, const QString& password = "admin123");
    // A connection of the test's own, made with the SDK directly, not through the worker.
    static Handle rawConnection(const vdec::VirtualDecoder* decoder);
    // Connects through the worker and waits for the result; null on a failed login or timeout.
    static Handle connectWorker(const vdec::VirtualDecoder* decoder, int* ret = nullptr);
    static QString logText(); // the call log

protected:
    bool setUp(); // for initTestCase: the call log goes to dir_
    bool settle(); // for cleanup: registry and queue empty, every decoder stopped
    // A loopback address claimed for the class, where nothing runs unless the test starts it.
    QString spare(int index);

    kvmstest::DecoderFixture fixture_;
    QTemporaryDir dir_;

private:
    QStringList spares_;
};
