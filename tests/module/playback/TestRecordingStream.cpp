// The client library's recording streams and the frame-callback player, without a decoder:
// what a stream reports, where a seek lands, and what the player hands back first.
#include "RecordingClip.h"
#include "SuiteMain.h"
#include "TestTimeout.h"

#include "CKawsPlayer.h"
#include "KavFrame.h"
#include "vms_sdk.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using kvmstest::scaled;

namespace {

struct Frame {
    int type = 0;
    quint64 timestamp = 0;
};

// Frames and events of one stream, as they arrive on the test's thread.
class StreamWatch : public QObject {
public:
    QString id;
    QList<Frame> frames;
    QList<int> events;
    QList<QByteArray> envelopes;

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
                envelopes.append(data);
            });
        connect(client, &vms_sdk::ClientSignals::signalStreamEventPush, this, [this](const QString& stream, int e) {
            if (stream == id)
                events.append(e);
        });
    }
};

// Keeps the callbacks the player makes, in order.
class CallbackPlayer : public CKawsPlayer {
public:
    std::mutex mutex;
    QList<int> types;
    QList<quint32> description;

protected:
    void frameDataCallback(int type, char* data, int length) override
    {
        std::lock_guard<std::mutex> lock(mutex);
        types.append(type);
        if (type == StreamInfo && length == 24)
            for (int i = 0; i < 6; ++i)
                description.append(reinterpret_cast<const quint32*>(data)[i]);
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
        QFile text(dir_.filePath(QStringLiteral("notes.txt")));
        QVERIFY(text.open(QIODevice::WriteOnly) && text.write("not a recording\n") > 0);
    }
    void cleanupTestCase() { vms_sdk::set_recording_locator({}); }

    void events_data()
    {
        QTest::addColumn<QString>("source");
        QTest::addColumn<int>("seconds");
        QTest::addColumn<QList<int>>("events");
        QTest::newRow("missing") << "missing.mp4" << 10 << QList<int> { 2 };
        QTest::newRow("not video") << "notes.txt" << 10 << QList<int> { 2 };
        // Three seconds of a two-second clip: it starts over, then the span ends.
        QTest::newRow("span covered") << "clip.mp4" << 3 << QList<int> { 1, 8 };
    }
    void events()
    {
        QFETCH(QString, source);
        QFETCH(int, seconds);
        QFETCH(QList<int>, events);
        const QString path = dir_.filePath(source);
        vms_sdk::set_recording_locator([path](const vms_sdk::PlaybackByTimeCondition&) { return path; });
        StreamWatch watch;
        const vms_sdk::PlaybackByTimeCondition span = spanOf(seconds);
        watch.id = vms_sdk::playback_by_time_req(span);
        QVERIFY(!watch.id.isEmpty());
        QVERIFY(vms_sdk::playback_speed_set_req(watch.id, QStringLiteral("4")) == 0); // a shorter wait
        QTRY_COMPARE_WITH_TIMEOUT(watch.events, events, scaled(15000));
        if (!watch.frames.isEmpty()) {
            QCOMPARE(watch.frames.first().type, int(KAV_TYPE_KEY));
            const quint64 end = quint64(span.end.toMSecsSinceEpoch());
            QVERIFY(watch.frames.last().timestamp < end);
            QVERIFY(watch.frames.last().timestamp >= end - 200); // the whole span was played
        }
        QCOMPARE(vms_sdk::disconnect_stream_req(watch.id), 0);
    }

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

    void playerDescribesBeforeThePictures()
    {
        vms_sdk::set_recording_locator([this](const vms_sdk::PlaybackByTimeCondition&) { return clip_; });
        StreamWatch watch;
        watch.id = vms_sdk::playback_by_time_req(spanOf(60));
        QTRY_VERIFY_WITH_TIMEOUT(watch.envelopes.size() > 5, scaled(10000));
        QCOMPARE(vms_sdk::disconnect_stream_req(watch.id), 0);

        CallbackPlayer player;
        QSignalSpy states(&player, &CKawsPlayer::signalVideoDataState);
        QCOMPARE(player.pushKavFrameData(reinterpret_cast<const unsigned char*>("kav"), 3), -1); // not connected
        QCOMPARE(player.Connect(QStringLiteral("kavFrame")), 0);
        QCOMPARE(player.startFrameDataCallback(), 0);
        // A picture that refers to an earlier key picture cannot lead.
        const QList<QByteArray> sent = QList<QByteArray> { watch.envelopes.at(1) } + watch.envelopes;
        for (const QByteArray& e : sent)
            player.pushKavFrameData(reinterpret_cast<const unsigned char*>(e.constData()), unsigned(e.size()));
        const QByteArray garbage("kav\xfb\xff\xff\xff\xff", 8);
        player.pushKavFrameData(reinterpret_cast<const unsigned char*>(garbage.constData()), unsigned(garbage.size()));
        QTRY_VERIFY_WITH_TIMEOUT(states.size() >= 2, scaled(5000));
        player.Disconnect();
        QCOMPARE(states.at(0).at(0).toInt(), int(CKawsPlayer::VideoArrives));
        QCOMPARE(states.at(1).at(0).toInt(), int(CKawsPlayer::DecodeFailed));
        QCOMPARE(player.description, (QList<quint32> { 0, 320, 180, 25000, 1000, 3 }));
        QCOMPARE(player.types.mid(0, 3), (QList<int> { 0, 1, 2 }));
        // The leading picture is dropped; the description comes first. Envelopes still queued to the
        // watch after the disconnect were never pushed.
        QCOMPARE(player.types.size(), sent.size());
    }
};

KVMS_TEST_CLASS(RecordingStreamTest)
#include "TestRecordingStream.moc"
