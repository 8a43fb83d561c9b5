// The replay player's own rules: which controls reach the client library, and what its stream's
// events do.
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
protected:
    int sendFrame(int, VideoStreamInfo*, char*, int, int) override { return 0; }
};

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
