#pragma once

#include <QObject>
#include <QString>
#include <QTemporaryDir>

namespace kvms_matrix {
class MainMatrixForm;
}

// The main page and the TV wall page with their parts, on the offscreen platform, driven with
// crafted results; decoders, where one is needed, are addresses where nothing listens.
class PageTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void pageFollowsTheConfiguration_data();
    void pageFollowsTheConfiguration();
    void loginErrorsAreToldInWords_data();
    void loginErrorsAreToldInWords();
    void errorsForAnotherFormAreIgnored();
    void connectFailuresShowOnThePage_data();
    void connectFailuresShowOnThePage();
    void successfulConnectReadsTheWallInOrder();
    void linkShowsInTheStrip_data();
    void linkShowsInTheStrip();
    void wallActionsNeedAConnection();
    void reconnectBacksOff_data();
    void reconnectBacksOff();

    // TestPagePieces.cpp
    void layoutSharesTheCells_data();
    void layoutSharesTheCells();
    void sourcePaneGivesChannelsAndStreams_data();
    void sourcePaneGivesChannelsAndStreams();
    void filterKeepsMatchesAndTheirParents();
    void failedLoginFromTheDialogIsTold();
    void catalogueGivesStreams();

private:
    // A wall page whose one decoder (kIp) failed its first login and retries no more.
    void settledWallPage(kvms_matrix::MainMatrixForm& form);

    QTemporaryDir dir_;
    QString previous_;
};

namespace pagetest {

// Nothing listens here: a login fails at once with a refused connection.
inline QString nowhere()
{
    return QStringLiteral("127.0.0.9");
}

// "decoderConfig.json" with the one decoder at nowhere(), or an empty list.
void writeDecoderConfig(bool withDecoder);

} // namespace pagetest
