#pragma once

// Discovery, network settings and activation through the worker. Discovery probes go only to
// the targets each test sets: the loopback ports of its decoders and fake answerers.

#include "WorkerRig.h"

#include <QByteArray>
#include <QMap>

class DiscoveryRig : public WorkerRig {
public:
    using InfoMap = QMap<QString, kvms_matrix::MatrixInfo>;

    static QByteArray targetOf(const vdec::VirtualDecoder* decoder);
    // One line per entry with every field discovery fills, for whole-map comparisons.
    static QStringList describe(const InfoMap& map);

protected:
    vdec::VirtualDecoder* startDecoder(const kvmstest::DecoderFixture::Tweak& tweak = {});
    // Sets the discovery targets, runs one search through the worker and returns its result.
    InfoMap search(const QByteArray& targets);
    // Queues a network change of the decoder found at `formerIp` and returns the result code.
    int changeAddress(const vdec::VirtualDecoder* decoder, const QString& formerIp, const QString& newIp, int type,
        const QString& password = QStringLiteral("admin123"), const QString& mask = QStringLiteral("255.255.255.0"));
    bool setUpDiscovery();
    bool settleDiscovery();
};
