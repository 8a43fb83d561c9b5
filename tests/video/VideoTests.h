#pragma once

// Live video end to end: cameras of tools/camera-sim on 127.0.0.50-59, in-process virtual
// decoders on 127.0.0.40-49, sources bound through the real worker and SDK, and the decoder's
// state and wall picture read through its monitor. Skipped when camera-sim was not built.

#include "MatrixSdkWorker.h"

#include "CameraSim.h"
#include "DecoderFixture.h"
#include "SdkSession.h"
#include "WorkerSuite.h"

#include <QImage>
#include <QJsonObject>
#include <QObject>

#include <memory>

class VideoTest : public QObject, public kvmstest::WorkerSuite {
    Q_OBJECT

private:
    // A decoder on 127.0.0.host with a one-screen wall of one window of `division`
    // sub-windows, and the worker connected to it; null on failure.
    Handle wallOn(int host, int division, int turnUnitMs = 1000);
    // The window as the page would send it, with a catalogue camera in sub-window `sub`.
    static kvms_matrix::MatrixWindowInfo withCamera(
        int division, int sub, const QString& ip, quint16 port, int channel, int stream);
    static int bind(const Handle& handle, const kvms_matrix::MatrixWindowInfo& window, int sub);
    // The "video" object of a sub-window in the decoder's state JSON.
    QJsonObject video(int sub) const;
    QImage wall() const;
    // The pictures of an H.264 clip of camera-sim, cut at its delimiters.
    static QList<QByteArray> clipPictures(const QString& path);

    kvmstest::DecoderFixture fixture_;
    vdec::VirtualDecoder* decoder_ = nullptr;
    std::unique_ptr<kvmstest::SdkSession> sdk_;
    kvmstest::CameraSim cameras_;

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    // TestLive.cpp
    void cameraMovesOnTheWall();
    void pictureMatchesTheClip();
    void streamFollowsTheChoice_data();
    void streamFollowsTheChoice();
    void unreachableCameraRecovers();
    void loopShowsEachCameraInTurn();

    // TestRobust.cpp
    void corruptStreamLeavesTheOthersPlaying();
    void pushedVideoIsDecodedAndGarbageSurvived();

    // TestMonitor.cpp
    void wallMovesOnTheMonitor();

    // TestSnapshot.cpp
    void snapshotSizes_data();
    void snapshotSizes();
    void workerFetchesTheSnapshot();
};
