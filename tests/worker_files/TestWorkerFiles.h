#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QTemporaryDir>

#include <memory>

// Test helpers on files of the working directory.
void writeText(const QString& name, const QByteArray& text);
QByteArray contentOf(const QString& name); // "<missing>" when it cannot be read

// The worker's records, error texts, call log and local files. Every test runs in a fresh
// temporary working directory, since the files are opened by bare name.
class TestWorkerFiles : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    // records
    void copiesShareTheConnection();

    // error texts and login errors
    void errorTable_data();
    void errorTable();
    void shippedErrorTableMatchesSdk();
    void loginError_data();
    void loginError();

    // call log
    void callLog_data();
    void callLog();

    // decoder lists
    void decoderListRoundTrip_data();
    void decoderListRoundTrip();
    void readLists_data();
    void readLists();
    void lastConnectedKeepsListAndLeavesOldTail();
    void failedListWriteKeepsTheOldFile_data();
    void failedListWriteKeepsTheOldFile();

    // tv walls
    void tvWallRoundTrip();

    // ini
    void iniLogin_data();
    void iniLogin();
    void iniBannerRoundTripAndZeroRect();

    // permissions
    void fileModes_data();
    void fileModes();

private:
    std::unique_ptr<QTemporaryDir> m_dir;
    QString m_previousDir;
};
