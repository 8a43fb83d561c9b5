// The replay player's own rules: where a picture goes, what it drops, and which controls reach
// the client library.
#include "MatrixSignals.h"
#include "PlayerbackPlayer.h"
#include "SuiteMain.h"

#include "KSingleton.h"
#include "PlaybackRecorder.h"
#include "RecordingSource.h"

#include <QtTest>

using namespace kvms_matrix;

namespace {

// Keeps what would go to the decoder instead of sending it.
class RecordingPlayer : public PlayerbackPlayer {
public:
    QList<int> windows;
    QList<int> kinds;
    void feed(int type, QByteArray data) { frameDataCallback(type, data.data(), data.size()); }

protected:
    int sendFrame(int windowId, VideoStreamInfo*, char*, int, int kind) override
    {
        windows.append(windowId);
        kinds.append(kind);
        return 0;
    }
};

QByteArray description(quint32 codec, quint32 width, quint32 height, quint32 num, quint32 den)
{
    const quint32 v[6] = { codec, width, height, num, den, 3 };
    return QByteArray(reinterpret_cast<const char*>(v), sizeof v);
}

vms_sdk::PlaybackByTimeCondition span()
{
    vms_sdk::PlaybackByTimeCondition c;
    c.deviceId = QStringLiteral("NVR1");
    c.channel = 1;
    c.end = QDateTime::currentDateTime();
    c.begin = c.end.addSecs(-60);
    return c;
}

int callsOf(const char* function)
{
    return vms_sdk::PlaybackRecorder::instance()->callsOf(QLatin1String(function)).size();
}

} // namespace

class PlayerbackPlayerTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // No recording behind any channel: streams open and report that they cannot connect.
        vms_sdk::set_recording_locator([](const vms_sdk::PlaybackByTimeCondition&) { return QString(); });
    }
    void init() { vms_sdk::PlaybackRecorder::instance()->clear(); }

    void picturesGoToTheKeyedWindow_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<bool>("connected");
        QTest::addColumn<bool>("described");
        QTest::addColumn<QList<int>>("sentTo");
        const QString key12 = QStringLiteral("windowid:12~subwindowid:0~windowtype:1");
        QTest::newRow("window 12") << key12 << true << true << QList<int> { 12, 12 };
        QTest::newRow("one separator") << QStringLiteral("windowid:12~subwindowid:0") << true << true << QList<int> {};
        QTest::newRow("no separator") << QStringLiteral("windowid:12") << true << true << QList<int> {};
        QTest::newRow("before the description") << key12 << true << false << QList<int> {};
        QTest::newRow("no decoder") << key12 << false << true << QList<int> {};
    }
    void picturesGoToTheKeyedWindow()
    {
        QFETCH(QString, key);
        QFETCH(bool, connected);
        QFETCH(bool, described);
        QFETCH(QList<int>, sentTo);
        RecordingPlayer player;
        if (connected)
            player.setTarget(QSharedPointer<CSharedHandle>::create(), 1, 1, 0, 3);
        player.setWindowKey(key);
        if (described)
            player.feed(CKawsPlayer::StreamInfo, description(0, 640, 360, 25000, 1000));
        player.feed(CKawsPlayer::KeyFrame, QByteArray("key picture"));
        player.feed(CKawsPlayer::AudioFrame, QByteArray("audio"));
        player.feed(CKawsPlayer::OtherFrame, QByteArray("picture"));
        QCOMPARE(player.windows, sentTo);
        if (!sentTo.isEmpty())
            QCOMPARE(player.kinds, (QList<int> { 1, 2 }));
    }

    void controls_data()
    {
        QTest::addColumn<QStringList>("actions");
        QTest::addColumn<QString>("speed");
        QTest::addColumn<int>("speedRequests");
        QTest::addColumn<int>("ctrlRequests");
        QTest::addColumn<int>("announced");
        QTest::newRow("speed while playing") << QStringList { "start", "speed 2" } << "2" << 1 << 0 << 1;
        QTest::newRow("speed while paused") << QStringList { "start", "pause", "speed 4" } << "1" << 0 << 1 << 2;
        QTest::newRow("same speed again") << QStringList { "start", "speed 2", "speed 2" } << "2" << 1 << 0 << 1;
        QTest::newRow("pause twice") << QStringList { "start", "pause", "pause", "resume", "resume" } << "1" << 0 << 2
                                     << 3;
        QTest::newRow("second start") << QStringList { "start", "start" } << "1" << 0 << 0 << 1;
        QTest::newRow("start and stop") << QStringList { "start", "stop", "stop" } << "1" << 0 << 0 << 2;
    }
    void controls()
    {
        QFETCH(QStringList, actions);
        QFETCH(QString, speed);
        QFETCH(int, speedRequests);
        QFETCH(int, ctrlRequests);
        QFETCH(int, announced);
        RecordingPlayer player;
        player.setTarget(QSharedPointer<CSharedHandle>::create(), 4, 2, 0, 5);
        QSignalSpy states(KCOMMON::KSingleton<MatrixSignals>::instance(), &MatrixSignals::signalVideoStateChanged);
        for (const QString& action : actions) {
            if (action == QLatin1String("start"))
                player.Start(span());
            else if (action == QLatin1String("stop"))
                player.Stop();
            else if (action.startsWith(QLatin1String("speed ")))
                player.setSpeed(action.mid(6));
            else
                player.pause(action == QLatin1String("pause"));
        }
        QCOMPARE(player.speedText(), speed);
        QCOMPARE(callsOf("playback_speed_set_req"), speedRequests);
        QCOMPARE(callsOf("playback_ctrl_req"), ctrlRequests);
        QCOMPARE(states.size(), announced);
        QCOMPARE(states.first().at(0).toString(), QStringLiteral("windowid:4~subwindowid:2~windowtype:0"));
        // Whatever was started is given back: no stream is left open behind the player.
        player.Stop();
        QVERIFY(vms_sdk::PlaybackRecorder::instance()->openStreams().isEmpty());
    }

    void streamEvents()
    {
        RecordingPlayer player;
        player.Start(span());
        const QString id = player.streamId();
        player.slotStreamEventPush(QStringLiteral("another"), 12);
        QVERIFY(player.messageText().isEmpty());
        player.slotStreamEventPush(id, 6); // the device limit counts only while replaying
        QVERIFY(player.messageText().isEmpty());
        player.slotStreamEventPush(id, 12);
        QCOMPARE(player.messageText(), QStringLiteral("device offline"));
        QCOMPARE(player.messageDisplay(), 4096);
        player.slotStreamEventPush(id, 8);
        QVERIFY(player.streamId().isEmpty());
        QVERIFY(!player.isConnected());
        QVERIFY(vms_sdk::PlaybackRecorder::instance()->openStreams().isEmpty());
    }
};

KVMS_TEST_CLASS(PlayerbackPlayerTest)
#include "TestPlayerbackPlayer.moc"
