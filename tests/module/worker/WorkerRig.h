#pragma once

// What the worker's test classes share beyond the worker suite's scaffolding: virtual decoders
// on pool addresses, loopback addresses where nothing runs, and discovery through the worker.
// The worker's thread starts once per process, so the suite's main runs the classes in a fixed
// order: the queue's first (it needs a worker that has never started), the shutdown's last.
// Every test uses decoders of its own and leaves the connection registry empty. Discovery
// probes go only to the targets each test sets: its decoders' and fake answerers' ports.

#include "DecoderFixture.h"
#include "QueuedSignalSpy.h"
#include "SignalRecorder.h"
#include "WorkerSuite.h"

#include <QByteArray>
#include <QMap>
#include <QStringList>

class WorkerRig : public kvmstest::WorkerSuite {
public:
    using InfoMap = QMap<QString, kvms_matrix::MatrixInfo>;

    // A connection of the test's own, made with the SDK directly, not through the worker.
    static Handle rawConnection(const vdec::VirtualDecoder* decoder);
    static QByteArray targetOf(const vdec::VirtualDecoder* decoder);
    // One line per entry with every field discovery fills, for whole-map comparisons.
    static QStringList describe(const InfoMap& map);

protected:
    bool setUp(); // for initTestCase: the call log goes to workDir_, messages nowhere
    bool settle(); // for cleanup: registry and queue empty, every decoder stopped
    // A loopback address claimed for the class, where nothing runs unless the test starts it.
    QString spare(int index);
    // A decoder without its web server, for the discovery tests.
    vdec::VirtualDecoder* startQuiet(const kvmstest::DecoderFixture::Tweak& tweak = {});
    // Sets the discovery targets, runs one search through the worker and returns its result.
    InfoMap search(const QByteArray& targets);
    // Queues a network change of the decoder found at `formerIp` and returns the result code.
    int changeAddress(const vdec::VirtualDecoder* decoder, const QString& formerIp, const QString& newIp, int type,
        const QString& password = QStringLiteral("admin123"), const QString& mask = QStringLiteral("255.255.255.0"));

    kvmstest::DecoderFixture fixture_;

private:
    QStringList spares_;
};
