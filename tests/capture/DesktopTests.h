#pragma once

// The operator's desktop on the wall, end to end: a real X display (Xvfb, the xcb platform)
// showing a known picture, the capture thread, the real SDK and an in-process virtual decoder
// on 127.0.0.170 to 179, whose wall picture is looked at. Skipped on any other platform.

#include "CaptureRig.h"
#include "PatternWindow.h"

#include <QObject>
#include <QTemporaryDir>

class DesktopTests : public QObject {
    Q_OBJECT

private:
    // Binds the desktop to sub-window 2 of a window of four on a one-screen wall, through the
    // worker's task and checks that the wall shows it; stops it and checks that frames stop.
    void checkDesktopOnWall(vdec::VirtualDecoder* decoder, const CaptureRig::Handle& handle);

    CaptureRig rig_;
    QTemporaryDir dir_;
    PatternWindow desktop_;

private slots:
    void initTestCase();
    void cleanup();

    void sharedMemoryGrabIsTheToolkitsGrab();
    void desktopBoundAsSourceReachesTheWall();
};
