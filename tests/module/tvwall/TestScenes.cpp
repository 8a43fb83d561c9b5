// Scenes through the worker, and every task of the wall without a usable connection.
#include "WallRig.h"

#include "QueuedSignalSpy.h"
#include "SignalRecorder.h"
#include "SuiteMain.h"

#include "MessageType.h"

#include "TestTimeout.h"

#include <QtTest>

#include <algorithm>
#include <functional>

using namespace kvms_matrix;
using kvmstest::scaled;

class TestScenes : public QObject, public WallRig {
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(enterWorkDirectory()); }
    void cleanup() { QVERIFY(settle()); }
    void cleanupTestCase() { QVERIFY(leaveWorkDirectory()); }
    void newSceneId_data();
    void newSceneId();
    void withoutConnection_data();
    void withoutConnection();
};

void TestScenes::newSceneId_data()
{
    QTest::addColumn<QList<int>>("existing");
    QTest::addColumn<int>("requested");
    QTest::addColumn<int>("expected");
    QTest::addColumn<int>("scenesAfter");
    QTest::addColumn<int>("listRead"); // what the decoder answers to the scene list
    QTest::addColumn<QString>("name");
    const QString morning = QStringLiteral("Morning");
    QTest::newRow("first free between 1, 2 and 4") << QList<int> { 1, 2, 4 } << -1 << 3 << 4 << 0 << morning;
    QTest::newRow("explicit id overwrites") << QList<int> { 1, 2 } << 2 << 2 << 2 << 0 << morning;
    // Guessing id 1 would overwrite the operator's scene 1.
    QTest::newRow("list unreadable: refused") << QList<int> { 1 } << -1 << -1 << 1 << int(CMATRIX_ERR_BUSY) << morning;
    // 150 two-byte characters do not fit 99 bytes: the cut falls between two characters.
    QTest::newRow("name cut to its field") << QList<int> {} << -1 << 1 << 1 << 0 << QString(150, QChar(0x00E9));
}

void TestScenes::newSceneId()
{
    QFETCH(QList<int>, existing);
    QFETCH(int, requested);
    QFETCH(int, expected);
    QFETCH(int, scenesAfter);
    QFETCH(int, listRead);
    QFETCH(QString, name);
    const Handle h = decoderOn();
    QVERIFY(h);
    for (int id : existing)
        QCOMPARE(CMatrix_SceneCreate(*sdk_, uint32_t(id), "old"), CMATRIX_OK);
    if (listRead != CMATRIX_OK)
        decoder_->faults().failNext(cmatrix::wire::MessageType::SceneGet, listRead);
    int marker = 0;
    QueuedSignalSpy saved(worker(), &MatrixSdkWorker::signalSaveSceneResult);
    worker()->saveScene(h, requested, name, &marker);
    QVERIFY(saved.wait(scaled(5000)));
    QCOMPARE(saved.at(0).mid(0, 3), QVariantList({ listRead, expected, name.left(49) }));
    QCOMPARE(saved.at(0).at(3).value<void*>(), static_cast<void*>(&marker));

    const vdec::DecoderSnapshot s = decoder_->snapshot();
    QCOMPARE(int(s.scenes.size()), scenesAfter);
    const uint32_t kept = listRead == CMATRIX_OK ? uint32_t(expected) : 1u;
    QVERIFY(s.scene(kept));
    QCOMPARE(QString::fromStdString(s.scene(kept)->name), listRead == CMATRIX_OK ? name.left(49) : "old");
}

namespace {

// One task of the TV wall, queued with the given connection, and the signal that answers it.
struct Operation {
    const char* signal;
    bool silentWithNull; // no answer at all for a null handle
    bool silentWhenDisconnected;
    std::function<void(MatrixSdkWorker*, const WallRig::Handle&)> queue;
};

const QList<Operation>& operations()
{
    using H = WallRig::Handle;
    static const QList<Operation> list = {
        { "signalSaveSceneResult", false, false,
            [](MatrixSdkWorker* w, const H& h) { w->saveScene(h, -1, "x", nullptr); } },
        { "signalRemoveSceneResult", false, false, [](MatrixSdkWorker* w, const H& h) { w->removeScene(h, 1); } },
        { "signalRestoreSceneResult", false, false, [](MatrixSdkWorker* w, const H& h) { w->restoreScene(h, 1); } },
        { "signalModifySceneResult", false, false, [](MatrixSdkWorker* w, const H& h) { w->modifyScene(h, 1, "y"); } },
        { "signalSetLoopInfoResult", false, false,
            [](MatrixSdkWorker* w, const H& h) { w->setLoopInfo(h, MatrixLoopInfo()); } },
        { "signalRemoveLoopInfoResult", false, false, [](MatrixSdkWorker* w, const H& h) { w->removeLoopInfo(h, 1); } },
        { "signalSetBannerResult", false, false,
            [](MatrixSdkWorker* w, const H& h) { w->setBanner(h, MatrixBannerInfo()); } },
        { "signalMatrixSetScreenColorResult", false, false,
            [](MatrixSdkWorker* w, const H& h) { w->setMatrixScreenColor(h, 0, 0, ScreenColor {}); } },
        { "signalSetAudioOutputEnableResult", false, false,
            [](MatrixSdkWorker* w, const H& h) { w->setAudioOutputEnable(h, 1, 1, 50, true); } },
        { "signalSetWindowSignalSourceResult", false, false,
            [](MatrixSdkWorker* w, const H& h) { w->startPlayHdmiVideo(h, MatrixWindowInfo(), 1, 0); } },
        { "signalClearWindowResult", false, false,
            [](MatrixSdkWorker* w, const H& h) { w->stopPlayDevFile(h, MatrixWindowInfo(), 1); } },
        { "signalAddWindowInfoResult", false, false,
            [](MatrixSdkWorker* w, const H& h) {
                MatrixWindowInfo floating = WallRig::windowInfo(9, 1);
                floating.windowType = 2;
                floating.w = floating.h = 100;
                w->addWindowInfo(h, floating);
            } },
        { "signalRemoveWindowResult", false, false,
            [](MatrixSdkWorker* w, const H& h) { w->removeWindow(h, WallRig::windowInfo(1, 1)); } },
        { "signalSetWindowSplitResult", false, false,
            [](MatrixSdkWorker* w, const H& h) { w->setWindowSplit(h, 1, 4); } },
        { "signalClearWindowResult", false, false,
            [](MatrixSdkWorker* w, const H& h) { w->clearWindow(h, 1, -1, 0); } },
        { "signalSetFullWindowResult", false, false,
            [](MatrixSdkWorker* w, const H& h) { w->setFullWindow(h, 1, 1, true); } },
        { "signalSetWindowSignalSourceResult", false, false,
            [](MatrixSdkWorker* w, const H& h) { w->setWindowSignalSource(h, WallRig::windowInfo(1, 1), 1, false); } },
        { "signalCheckScreenResult", false, false, [](MatrixSdkWorker* w, const H& h) { w->checkScreen(h, 0, true); } },
        // A layout goes to the connection registered for the address: none here.
        { "signalSetLayoutResult", false, false,
            [](MatrixSdkWorker* w, const H& h) {
                w->setLayout(QStringLiteral("W"), 0, 1, 1, {}, h ? h->ip() : QStringLiteral("127.0.0.253"));
            } },
        // Moving a window never answers. Without divisions to report a loop start answers
        // nothing; a hide answers nothing only for a null handle.
        { "moveFloatingWindow", true, true,
            [](MatrixSdkWorker* w, const H& h) { w->moveFloatingWindow(h, WallRig::windowInfo(9, 1)); } },
        { "signalRestoreLoopInfoResult", true, true,
            [](MatrixSdkWorker* w, const H& h) { w->restoreLoopInfo(h, 0, 1, MatrixLoopInfo()); } },
        { "signalRemoveBannerResult", true, false, [](MatrixSdkWorker* w, const H& h) { w->removeBanner(h); } },
    };
    return list;
}

// What a decoder received, heartbeats left out.
int requestsTo(vdec::VirtualDecoder* d)
{
    const auto all = d->journal().entries();
    return int(std::count_if(all.begin(), all.end(), [](const vdec::JournalEntry& e) {
        return cmatrix::wire::requestOf(e.type) != cmatrix::wire::MessageType::Heartbeat;
    }));
}

} // namespace

void TestScenes::withoutConnection_data()
{
    QTest::addColumn<bool>("disconnected"); // else a null handle
    QTest::newRow("null handle") << false;
    QTest::newRow("disconnected") << true;
}

// Every task of the wall is refused without a usable connection, and nothing reaches the decoder.
void TestScenes::withoutConnection()
{
    QFETCH(bool, disconnected);
    vdec::VirtualDecoder* d = startDecoder();
    QVERIFY(d);
    MatrixSdkWorker* w = worker();
    Handle h = connectWorker(d); // also makes sure the worker's thread runs
    QVERIFY(h);
    QueuedSignalSpy gone(w, &MatrixSdkWorker::signalDisconnectMatrixResult);
    w->disconnectMatrix(h);
    QVERIFY(gone.wait(scaled(5000)));
    QTRY_COMPARE_WITH_TIMEOUT(d->connectionCount(), 0, scaled(5000)); // its last words are in
    if (!disconnected)
        h.reset();
    const int seenBefore = requestsTo(d);

    SignalRecorder recorder(w, MatrixSdkWorker::staticMetaObject);
    QMap<QByteArray, int> answers;
    for (const Operation& op : operations()) {
        op.queue(w, h);
        if (!(disconnected ? op.silentWhenDisconnected : op.silentWithNull))
            ++answers[op.signal];
    }
    w->getLayout(h, nullptr);
    w->getWindowInfo(h); // answered in order, after the tasks under test
    QTRY_COMPARE_WITH_TIMEOUT(recorder.count("signalGetWindowInfoResult"), 1, scaled(5000));
    int total = 2;
    for (auto it = answers.begin(); it != answers.end(); ++it) {
        QVERIFY2(recorder.count(it.key()) == it.value(), it.key());
        for (const QVariantList& args : recorder.argsOf(it.key()))
            QVERIFY2(args.at(0).toInt() == CMATRIX_ERR_FAILED, it.key());
        total += it.value();
    }
    QCOMPARE(recorder.total(), total);
    const QVariantList layout = recorder.argsOf("signalGetLayoutInfoResult").at(0);
    QCOMPARE(layout.at(1).toInt(), CMATRIX_ERR_FAILED);
    QVERIFY(layout.at(2).value<QList<MatrixInfo>>().isEmpty());
    const QVariantList wall = recorder.argsOf("signalGetWindowInfoResult").at(0);
    QVERIFY(wall.at(0).value<QList<MatrixWindowInfo>>().isEmpty());
    QCOMPARE(wall.mid(1), QVariantList({ 1, 1 }));
    QCOMPARE(requestsTo(d), seenBefore);
}

KVMS_TEST_CLASS(TestScenes)
#include "TestScenes.moc"
