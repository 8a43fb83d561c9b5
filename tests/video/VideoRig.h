#pragma once

// Live video end to end: cameras of tools/camera-sim on 127.0.0.50-59, in-process virtual
// decoders on addresses of the shared pool, sources bound through the real worker and SDK, and the decoder's
// state and wall picture read through its monitor.

#include "MatrixSdkWorker.h"

#include "CameraSim.h"
#include "DecoderFixture.h"
#include "SdkSession.h"
#include "WorkerSuite.h"

#include <QImage>
#include <QJsonObject>

#include <memory>

inline const QString kCameraIp = QStringLiteral("127.0.0.50");

class VideoRig : public kvmstest::WorkerSuite {
protected:
    // A decoder on a loopback address of the shared pool with a one-screen wall of one window of `division`
    // sub-windows, and the worker connected to it; null on failure.
    Handle wallOn(int division);
    // The window as the page would send it, with a catalogue camera in sub-window `sub`.
    static kvms_matrix::MatrixWindowInfo withCamera(
        int division, int sub, const QString& ip, quint16 port, int channel, int stream);
    static int bind(const Handle& handle, const kvms_matrix::MatrixWindowInfo& window, int sub);
    // camera-sim's "Gate" on `ip`, a wall as wallOn() and the camera's channel 1 bound to
    // sub-window 1 through the worker with `stream`; null unless it plays (see failure_).
    Handle playGate(int division, int stream, const QString& ip = kCameraIp);
    static bool playing(const QJsonObject& video);
    // The "video" object of a sub-window in the decoder's state JSON.
    QJsonObject video(int sub) const;
    // The pictures of the first of the suite's camera-sim clips matching `pattern`, cut at
    // their delimiters; and decoded.
    static QList<QByteArray> clipPictures(const QString& pattern);
    static QList<QImage> clipFrames(const QString& pattern);
    // How far (mean difference per colour channel, 0..255) a picture is from the nearest
    // of `frames` of its size.
    static double offClip(const QImage& picture, const QList<QImage>& frames);
    // For cleanup: the worker settled, the decoder and the cameras stopped.
    bool settle();

    kvmstest::DecoderFixture fixture_;
    vdec::VirtualDecoder* decoder_ = nullptr;
    std::unique_ptr<kvmstest::SdkSession> sdk_;
    kvmstest::CameraSim cameras_;
    QString failure_;
};
