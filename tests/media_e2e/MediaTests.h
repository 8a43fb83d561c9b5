#pragma once

#include "DecoderFixture.h"
#include "FrameSamples.h"
#include "WireBuilders.h"

#include "CMatrixSDK.h"

#include <QImage>
#include <QObject>

#include <vector>

using kvmstest::window;

// Media frames end to end through the real SDK into in-process virtual decoders
// (127.0.0.80 to .99), looked at through the decoders' state and wall picture.
class MediaTests : public QObject {
    Q_OBJECT

public:
    static DeviceInfo_t source(int sub, const char* devId, int protocol, int channel, const char* url = "");
    static int display(CMHANDLE handle, int windowId, int sub, const FrameSamples::Bytes& frame);
    // The colour at a point given as a fraction of the image's width and height.
    static QColor at(const QImage& image, double fx, double fy);
    static bool near(const QColor& a, const QColor& b, int tolerance = 24);

private:
    // Grid, windows and their divisions, set through the SDK.
    static bool layOut(CMHANDLE handle, int cols, int rows, const std::vector<MatrixWindow_t>& windows,
        const std::vector<int>& divisions);

    kvmstest::DecoderFixture fixture_;

private slots:
    void cleanup();

    // TestPictures.cpp
    void pictureShowsInSubWindow_data();
    void pictureShowsInSubWindow();
    void newSourceClearsPicture();
    void quickPicturesShowTheLatest_data();
    void quickPicturesShowTheLatest();

    // TestDistributions.cpp
    void distributionFeedsBoundSubWindows();
    void distributionEndsWithItsConnection();
    void mediaConnectionLossIsNotReported();

    // TestBadFrames.cpp
    void badFrames_data();
    void badFrames();

};
