#pragma once

// Desktop projection, still pictures and replayed frames through the real worker and SDK into
// in-process virtual decoders on 127.0.0.160 to 169, on the offscreen platform. The calls the
// module makes into the SDK are seen by SdkCallTap; what arrived, by the decoder's snapshot.

#include "CaptureRig.h"

#include <QObject>
#include <QTemporaryDir>

class CaptureTests : public QObject {
    Q_OBJECT

private:
    CaptureRig rig_;
    QTemporaryDir dir_;

private slots:
    void initTestCase();
    void cleanup();

    // TestFrames.cpp
    void captureLoopSendsFullHdPictures();
    void recordingFrames_data();
    void recordingFrames();
    void stillPicture_data();
    void stillPicture();
    void directJpegIsTheToolkitsPicture_data();
    void directJpegIsTheToolkitsPicture();

    // TestRegistry.cpp
    void registryChoosesTheCall_data();
    void registryChoosesTheCall();
    void removeMdHandle_data();
    void removeMdHandle();
    void removeMdHandleTakesTheFirstMatchInKeyOrder();
    void removeMdHandleDoesNotWaitForTheDecoder();
};
