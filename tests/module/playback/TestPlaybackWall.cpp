// A recording replayed onto a virtual decoder's wall the way the page does it: a "rec_" source
// bound to a sub-window, the player feeding its media distribution, pause, exitback.
#include "ControlMatrixWt.h"
#include "DecoderFixture.h"
#include "MatrixSignals.h"
#include "MonitorClient.h"
#include "PlaybackBarWt.h"
#include "PlayerbackPlayer.h"
#include "RecordingClip.h"
#include "SdkSession.h"
#include "SuiteMain.h"
#include "TestTimeout.h"
#include "WallPlayback.h"
#include "WireBuilders.h"
#include "WorkerSuite.h"

#include "KSingleton.h"
#include "RecordingSource.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QPushButton>
#include <QtTest>

using namespace kvms_matrix;
using kvmstest::scaled;

class PlaybackWallTest : public QObject, public kvmstest::WorkerSuite {
    Q_OBJECT

private:
    kvmstest::DecoderFixture fixture_;
    QString clip_;

private slots:
    void initTestCase()
    {
        QVERIFY(enterWorkDirectory());
        clip_ = workDir_.filePath(QStringLiteral("recording.mp4"));
        if (!kvmstest::makeRecordingClip(clip_, 3))
            QSKIP("ffmpeg with libx264 is not available");
        const QString clip = clip_;
        vms_sdk::set_recording_locator([clip](const vms_sdk::PlaybackByTimeCondition&) { return clip; });
    }
    void cleanupTestCase()
    {
        vms_sdk::set_recording_locator({});
        QVERIFY(leaveWorkDirectory());
    }

    void replaysPausesAndExits()
    {
        vdec::VirtualDecoder* decoder = fixture_.startDecoder();
        QVERIFY(decoder);
        kvmstest::SdkSession sdk;
        QCOMPARE(sdk.connect(decoder), CMATRIX_OK);
        QCOMPARE(CMatrix_SetMatrix(sdk, 1, 1, "Wall"), CMATRIX_OK);
        const MatrixWindow_t cell = kvmstest::window(1, 0, 0, 32768, 32768);
        QCOMPARE(CMatrix_WindowAdd(sdk, &cell, 1, true), CMATRIX_OK);
        QCOMPARE(CMatrix_WindowSetDivision(sdk, 1, 4), CMATRIX_OK);
        const Handle h = connectWorker(decoder);
        QVERIFY(h);

        MatrixWindowInfo window = windowInfo(1, 4);
        window.w = window.h = 32768;
        QWidget page;
        ControlMatrixWt canvas(&page);
        canvas.setWindowInfoList({ window }, 1, 1);
        QStringList tips;
        WallPlayback playback(
            worker(), &canvas, nullptr, [h] { return h; }, [&tips](const QString& t) { tips.append(t); }, &page);

        PlaybackChoice choice;
        choice.channelId = QStringLiteral("NVR9&1");
        choice.deviceId = QStringLiteral("NVR9");
        choice.channel = 1;
        choice.name = QStringLiteral("Gate");
        choice.end = QDateTime::currentDateTime();
        choice.begin = choice.end.addSecs(-600);
        playback.start(1, 2, 0, choice);
        QTRY_VERIFY_WITH_TIMEOUT(playback.player(1, 2, 0), scaled(10000));
        PlayerbackPlayer* player = playback.player(1, 2, 0);
        QCOMPARE(player->status(), PlayerbackPlayer::kStatusStreaming);

        const MonitorClient monitor(decoder->address(), decoder->httpPort());
        const auto sub2 = [&monitor] {
            return monitor.state()["windows"].toArray().at(0).toObject()["subWindows"].toArray().at(1).toObject();
        };
        const auto media
            = [&sub2](const char* field) { return sub2()["media"].toObject()[field].toVariant().toLongLong(); };
        QVERIFY(sub2()["source"].toObject()["name"].toString().startsWith(QLatin1String("rec_Gate")));
        QTRY_VERIFY_WITH_TIMEOUT(media("decoded") > 5, scaled(15000));
        QCOMPARE(sub2()["media"].toObject()["picture"].toObject()["width"].toInt(), 320); // the recording's own
        QCOMPARE(media("failed"), 0);
        // The pictures move: the recording's clock and pattern change from one look to the next.
        const QImage wall = monitor.wall();
        const QRect place(wall.width() / 2, 0, wall.width() / 2, wall.height() / 2); // top right quarter
        const QImage first = wall.copy(place);
        QTRY_VERIFY_WITH_TIMEOUT(monitor.wall().copy(place) != first, scaled(5000));

        // Paused, no more frames reach the window (once those in flight are in).
        QSignalSpy progress(KCOMMON::KSingleton<MatrixSignals>::instance(), &MatrixSignals::signalPlaybackProgress);
        QTRY_VERIFY_WITH_TIMEOUT(progress.size() > 0, scaled(5000));
        QCOMPARE(progress.last().at(0).toString(), QStringLiteral("windowid:1~subwindowid:2~windowtype:0"));
        QTest::mouseClick(playback.bar()->pauseButton(), Qt::LeftButton);
        QCOMPARE(player->playState(), 0);
        const auto settled = [&media] {
            const qint64 frames = media("frames");
            return !QTest::qWaitFor([&] { return media("frames") > frames; }, 600);
        };
        QTRY_VERIFY_WITH_TIMEOUT(settled(), scaled(10000));
        QTest::mouseClick(playback.bar()->pauseButton(), Qt::LeftButton);
        const qint64 resumedFrom = media("frames");
        QTRY_VERIFY_WITH_TIMEOUT(media("frames") > resumedFrom, scaled(5000));

        // Exitback: the player stops, the distribution goes and the sub-window is emptied.
        QCOMPARE(monitor.state()["distributions"].toArray().size(), 1);
        emit KCOMMON::KSingleton<MatrixSignals>::instance()->signalVideoExitback(1, 2, 0);
        QVERIFY(!playback.player(1, 2, 0));
        QTRY_VERIFY_WITH_TIMEOUT(monitor.state()["distributions"].toArray().isEmpty(), scaled(10000));
        QTRY_VERIFY_WITH_TIMEOUT(sub2()["source"].toObject()["devId"].toString().startsWith(QLatin1String("emp_"))
                || sub2()["source"].isNull(),
            scaled(10000));
        QVERIFY(settleWorker());
        fixture_.cleanup();
    }
};

KVMS_TEST_CLASS(PlaybackWallTest)
#include "TestPlaybackWall.moc"
