#pragma once

#include "DecoderFixture.h"

#include <QObject>

// The virtual decoder, driven over TCP with raw protocol messages.
class DecoderTests : public QObject {
    Q_OBJECT

private slots:
    void cleanup();

    // TestLogin.cpp
    void unknownUserAnswersAsWrongPassword();
    void loginSequences_data();
    void loginSequences();
    void lockExpires();
    void requestsBeforeLogin_data();
    void requestsBeforeLogin();
    void unknownRequestsAfterLogin();

    // TestValidation.cpp
    void badRequests_data();
    void badRequests();

    // TestWindows.cpp
    void sourceRemoval_data();
    void sourceRemoval();
    void divisionDropsSourcesBeyondIt();

    // TestWall.cpp
    void setMatrixClearsWindowsOnlyOnNewGrid();
    void corruptStateStartsFresh_data();
    void corruptStateStartsFresh();

    // TestConnections.cpp
    void clientsShareOneWall();
    void brokenStreams_data();
    void brokenStreams();
    void heartbeatTimeoutClosesSilentClient();

    // TestFaults.cpp
    void lateAnswersAndDrops();

    // TestDaemon.cpp
    void daemonListensAndStops();
    void daemonRefusesBadArguments_data();
    void daemonRefusesBadArguments();

private:
    // A decoder with a 4x4 wall "Lobby": cell window 1 (division 4, a source in
    // sub-window 2) and floating window 2; and a logged-in client.
    kvmstest::TestClient* standardWall(vdec::VirtualDecoder** decoder = nullptr);

    kvmstest::DecoderFixture fixture_;
};
