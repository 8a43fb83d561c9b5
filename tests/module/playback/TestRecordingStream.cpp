// The client library's recording streams, without a decoder: where a seek lands.
#include "RecordingClip.h"
#include "SuiteMain.h"
#include "TestTimeout.h"

#include "KavFrame.h"
#include "vms_sdk.h"

#include <QTemporaryDir>
#include <QtTest>

using kvmstest::scaled;

namespace {

struct Frame {
    int type = 0;
    quint64 timestamp = 0;
};

// Frames of one stream, as they arrive on the test's thread.
class StreamWatch : public QObject {
public:
    QString id;
    QList<Frame> frames;

    StreamWatch()
    {
        auto* client = vms_sdk::ClientSignals::instance();
        connect(client, &vms_sdk::ClientSignals::signalStreamData, this,
            [this](const QString& stream, const QByteArray& data) {
                KavFrame f {};
                KavStreamInfo info {};
                if (stream != id || data.size() < 17)
                    return;
                KavUnpackFrame(reinterpret_cast<const unsigned char*>(data.constData()), data.size(), &f, &info);
                frames.append({ int(f.type), f.timestamp });
            });
    }
};

vms_sdk::PlaybackByTimeCondition spanOf(int seconds)
{
    vms_sdk::PlaybackByTimeCondition c;
    c.deviceId = QStringLiteral("NVR1");
    c.channel = 1;
    c.begin = QDateTime::fromSecsSinceEpoch(1700000000);
    c.end = c.begin.addSecs(seconds);
    return c;
}

} // namespace

class RecordingStreamTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir dir_;
    QString clip_;

private slots:
    void initTestCase()
    {
        clip_ = dir_.filePath(QStringLiteral("clip.mp4"));
        if (!kvmstest::makeRecordingClip(clip_, 2))
            QSKIP("ffmpeg with libx264 is not available");
    }
    void cleanupTestCase() { vms_sdk::set_recording_locator({}); }

    void seekLandsOnAKeyPictureAtTheTime()
    {
        vms_sdk::set_recording_locator([this](const vms_sdk::PlaybackByTimeCondition&) { return clip_; });
        StreamWatch watch;
        const vms_sdk::PlaybackByTimeCondition span = spanOf(600);
        watch.id = vms_sdk::playback_by_time_req(span);
        QTRY_VERIFY_WITH_TIMEOUT(watch.frames.size() > 3, scaled(10000));
        const QDateTime target = span.begin.addSecs(301); // second 1 of the clip's 151st round
        QCOMPARE(vms_sdk::skip_by_appointed_time_req(watch.id, target), 0);
        const auto afterSeek = [&] {
            for (const Frame& f : watch.frames)
                if (f.timestamp >= quint64(span.begin.addSecs(300).toMSecsSinceEpoch()))
                    return f;
            return Frame {};
        };
        QTRY_VERIFY_WITH_TIMEOUT(afterSeek().timestamp != 0, scaled(10000));
        QCOMPARE(afterSeek().type, int(KAV_TYPE_KEY));
        QCOMPARE(afterSeek().timestamp, quint64(target.toMSecsSinceEpoch()));
        // A time outside the span is refused.
        QCOMPARE(vms_sdk::skip_by_appointed_time_req(watch.id, span.end.addSecs(1)), -1);
        QCOMPARE(vms_sdk::disconnect_stream_req(watch.id), 0);
    }
};

KVMS_TEST_CLASS(RecordingStreamTest)
#include "TestRecordingStream.moc"
