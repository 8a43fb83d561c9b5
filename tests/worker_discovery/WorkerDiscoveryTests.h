#pragma once

// Discovery, network settings and activation through the real worker, the real SDK and
// in-process virtual decoders on 127.0.0.180 to 199 (fake answerers among them). Discovery
// probes go only to the targets each test sets: the decoders' and fakes' loopback ports.

#include "MatrixSdkWorker.h"

#include "DecoderFixture.h"

#include <QByteArray>
#include <QObject>
#include <QStringList>
#include <QTemporaryDir>

class TestWorkerDiscovery : public QObject {
    Q_OBJECT

public:
    using InfoMap = QMap<QString, kvms_matrix::MatrixInfo>;

    static kvms_matrix::MatrixSdkWorker* worker();
    static QByteArray targetOf(const vdec::VirtualDecoder* decoder);
    // One line per entry with every field discovery fills, for whole-map comparisons.
    static QStringList describe(const InfoMap& map);

private:
    vdec::VirtualDecoder* startDecoder(int host, const kvmstest::DecoderFixture::Tweak& tweak = {});
    // Sets the discovery targets, runs one search through the worker and returns its result;
    // `published` receives how many results came (waiting one round past the first).
    InfoMap search(const QByteArray& targets, int* published = nullptr);
    // Queues a network change of the decoder found at `formerIp` and returns the result code.
    int changeAddress(const vdec::VirtualDecoder* decoder, const QString& formerIp, const QString& newIp, int type,
        const QString& password = QStringLiteral("admin123"), const QString& mask = QStringLiteral("255.255.255.0"));

    kvmstest::DecoderFixture fixture_;
    QTemporaryDir dir_;

private slots:
    void initTestCase();
    void cleanup();

    // TestSearch.cpp
    void decoderAnsweringEveryRoundIsListedOnce();
    void foundRecordsTakeTheDescriptorFields();
    void answersTheMapMustNotTake_data();
    void answersTheMapMustNotTake();
    void newSearchStartsAfresh();
    void strayCallbacksAfterTheSearch_data();
    void strayCallbacksAfterTheSearch();

    // TestNetworkSettings.cpp
    void addressChangeKeepsBothKeyForms_data();
    void addressChangeKeepsBothKeyForms();
    void failedSetupLeavesTheMapAlone_data();
    void failedSetupLeavesTheMapAlone();
    void networkOfAnUnknownUnitIsZero();
    void activation_data();
    void activation();
    void localAddressFilter_data();
    void localAddressFilter();
    void localAddressesOfThisWorkstation();
};
