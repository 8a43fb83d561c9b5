#pragma once

// Scenes, loops, banners, HDMI input, device files, screen colour and audio end to end: the real
// worker, the real SDK and in-process virtual decoders on 127.0.0.200 to 229. Each slot uses
// decoders of its own and leaves the connection registry empty. The worker's INI mirror and the
// call log live in a temporary working directory.

#include "MatrixSdkWorker.h"

#include "DecoderFixture.h"
#include "QueuedSignalSpy.h"
#include "SdkSession.h"
#include "SignalRecorder.h"
#include "WorkerSuite.h"

#include <QObject>
#include <QSharedPointer>
#include <QStringList>
#include <QTemporaryDir>

// A connection of the test's own, to build a wall before the worker acts on it.
class RawWall {
public:
    explicit RawWall(const vdec::VirtualDecoder* decoder);

    bool ok() const { return m_ok; }
    CMHANDLE handle() const { return m_sdk.handle(); }
    int addWindow(uint32_t id, int division = 1);
    int bind(int windowId, int subWindow, const char* devId);
    int createScene(uint32_t id, const char* name);
    // A scheme of kind 4 with one source per id; an empty id stands for an empty slot.
    int createScheme(uint32_t id, const char* name, const QStringList& sourceIds = {});

private:
    kvmstest::SdkSession m_sdk;
    bool m_ok = false;
};

class TvWallScenesTest : public QObject, public kvmstest::WorkerSuite {
    Q_OBJECT

private:
    vdec::VirtualDecoder* startDecoder(int host, const kvmstest::DecoderFixture::Tweak& tweak = {});

    kvmstest::DecoderFixture fixture_;

private slots:
    void initTestCase();
    void cleanup();
    void cleanupTestCase();

    // TestScenes.cpp
    void newSceneId_data();
    void newSceneId();
    void renameStoresTheCurrentWall_data();
    void renameStoresTheCurrentWall();
    void restoreListAndRemove();
    void withoutConnection_data();
    void withoutConnection();

    // TestLoops.cpp
    void savingALoop_data();
    void savingALoop();
    void protocolNames_data();
    void protocolNames();
    void listSkipsEmptySources();
    void startedLoopTurnsAndStops_data();
    void startedLoopTurnsAndStops();

    // TestBanners.cpp
    void bannerFontSize_data();
    void bannerFontSize();
    void decoderBannerMirror_data();
    void decoderBannerMirror();
    void removedBannerKeepsTextAndColours();

    // TestDeviceFiles.cpp
    void fileListLeavesOutSystemFolder();
    void playInWindow_data();
    void playInWindow();
    void screenColour_data();
    void screenColour();
    void audioOfOneSubWindow_data();
    void audioOfOneSubWindow();
    void hdmiConnectors();
};
