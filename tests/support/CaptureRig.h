#pragma once

#include "MatrixSdkWorker.h"

#include "DecoderFixture.h"
#include "KavFrame.h"

#include <QByteArray>
#include <QSharedPointer>
#include <QString>

// What the capture tests share: the worker singleton connected to in-process virtual decoders,
// a one-screen wall laid out through the SDK, envelopes taken apart, and a look at the log.
class CaptureRig {
public:
    using Handle = QSharedPointer<kvms_matrix::CSharedHandle>;

    // A packed frame as the decoder receives it.
    struct Envelope {
        bool ok = false;
        int typeByte = -1;
        int headerSize = 0;
        KavFrame frame {};
        KavStreamInfo info {};
        QByteArray payload;
        int rate100() const { return info.frameRateDen ? int(info.frameRateNum * 100ull / info.frameRateDen) : 0; }
    };

    static kvms_matrix::MatrixSdkWorker* worker();
    static Envelope unpack(const QByteArray& packed);

    // A decoder on a loopback address of its own.
    vdec::VirtualDecoder* startDecoder(const kvmstest::DecoderFixture::Tweak& tweak = {});
    // Logs in through the worker (so the connection is registered); null on failure.
    Handle connect(const vdec::VirtualDecoder* decoder);
    // A 1 x 1 wall named "Capture" with one window over all of it, divided as asked.
    static bool layOut(const Handle& handle, int windowId, int division);
    // Binds a picture-kind source to one sub-window, as the page does for a capture.
    static bool bindSource(const Handle& handle, int windowId, int sub, const char* deviceId, int protocol = 6);

    // The host log file of this run, and the lines it has gained since `from` bytes.
    QString logPath() const { return logPath_; }
    void setLogFile(const QString& path);
    qint64 logSize() const;
    QStringList logLinesSince(qint64 from) const;

    // Stops the capture, releases the distributions left in the worker's registry, logs out of
    // every decoder and stops them.
    void cleanup();

private:
    kvmstest::DecoderFixture fixture_;
    QString logPath_;
};
