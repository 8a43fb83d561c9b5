// The main page's choice and messages, and the TV wall page's answers to connect results,
// driven with crafted results (no decoder needed).
#include "PageRig.h"
#include "SuiteMain.h"
#include "TestTimeout.h"

#include "ConnectErrorText.h"
#include "DecoderStatusStrip.h"
#include "MainMatrixForm.h"
#include "MatrixForm.h"
#include "MatrixPageState.h"
#include "MatrixSdkWorker.h"

#include "SystemAssistant.h"

#include <QTemporaryDir>

using namespace kvms_matrix;
using kvmstest::scaled;

class TestPage : public QObject, public PageRig {
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(setUp()); }
    void init() { clearFiles(); }
    void cleanupTestCase() { tearDown(); }
    void loginErrorsAreToldInWords_data();
    void loginErrorsAreToldInWords();
    void errorsForAnotherFormAreIgnored();
    void connectFailuresShowOnThePage_data();
    void connectFailuresShowOnThePage();
    void linkShowsInTheStrip_data();
    void linkShowsInTheStrip();
    void reconnectBacksOff_data();
    void reconnectBacksOff();
};

namespace {

const QString kIp = PageRig::nowhere();

QSharedPointer<CSharedHandle> handleFor(const QString& ip)
{
    auto handle = QSharedPointer<CSharedHandle>::create();
    handle->setIp(ip);
    return handle;
}

} // namespace

void TestPage::loginErrorsAreToldInWords_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<QList<int>>("counters"); // errors made, allowed, lock minutes, seconds to unlock
    QTest::addColumn<QString>("message");
    const QString d = QStringLiteral("Decoder(127.0.0.9) ");
    QTest::newRow("password, counted") << "PASSWDERR" << QList<int> { 3, 5, 10, 0 }
                                       << d
            + "connection failed:Incorrect user name or password,3 errors have been "
              "made,2 errors will be locked for 10 minutes!";
    QTest::newRow("password, one counter known") << "PASSWDERR" << QList<int> { -1, -1, 0, 0 }
                                                 << d
            + "connection failed:Incorrect user name or password,-1 errors "
              "have been made,0 errors will be locked for 0 minutes!";
    QTest::newRow("password, no counters")
        << "PASSWDERR" << QList<int> { -1, -1, -1, 0 } << d + "connection failed:Incorrect user name or password!";
    QTest::newRow("locked") << "USERLOCK" << QList<int> { 0, 0, 0, 120 }
                            << d + "has been locked,it will unlock after 120 seconds.";
    QTest::newRow("not active") << "DEVNOACTIVE" << QList<int> { 0, 0, 0, 0 }
                                << d + "connection failed:Device not active!";
    QTest::newRow("other code") << "TIMEOUT" << QList<int> { 0, 0, 0, 0 } << d + "connection failed:unknow error!";
    QTest::newRow("no code") << "" << QList<int> { -1, -1, -1, -1 } << d + "connection failed:unknow error!";
}

void TestPage::loginErrorsAreToldInWords()
{
    QFETCH(QString, code);
    QFETCH(QList<int>, counters);
    QFETCH(QString, message);
    MainMatrixForm form;
    form.slot_connectErrorMsg(kIp, { code, counters[0], counters[1], counters[2], counters[3] }, &form);
    QCOMPARE(SystemAssistant::recentMessages(), QStringList { message });
}

void TestPage::errorsForAnotherFormAreIgnored()
{
    MainMatrixForm form;
    settledWallPage(form);
    MatrixForm* page = form.tvWallPage();
    SystemAssistant::clearRecentMessages();
    const QString tip = page->tipText();
    int other = 0;
    ConnectErrorMsgInfo info;
    info.errCode = QStringLiteral("USERLOCK");
    form.slot_connectErrorMsg(kIp, info, &other);
    page->slotConnectMatrixResult(handleFor(kIp), 0, 0, &other);
    page->slotConnectMatrixResult(handleFor(kIp), CMATRIX_ERR_PASSWORD, 0, &other);
    QVERIFY(SystemAssistant::recentMessages().isEmpty());
    QCOMPARE(page->tipText(), tip);
    QCOMPARE(page->state().link(kIp), MatrixPageState::Link::Lost);
}

void TestPage::connectFailuresShowOnThePage_data()
{
    QTest::addColumn<bool>("withHandle");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("tip");
    QTest::newRow("refused")
        << true << int(CMATRIX_ERR_CONNECT)
        << QStringLiteral("Decoder connect failed(-5, %1).").arg(MatrixSdkWorker::getErrorInfo(CMATRIX_ERR_CONNECT));
    QTest::newRow("no connection") << true << -1 << "Decoder connect failed(-1, connect server failed).";
    QTest::newRow("no handle") << false << int(CMATRIX_ERR_TIMEOUT)
                               << "Decoder connect failed(-1, connect server failed).";
}

void TestPage::connectFailuresShowOnThePage()
{
    QFETCH(bool, withHandle);
    QFETCH(int, code);
    QFETCH(QString, tip);
    MainMatrixForm form;
    settledWallPage(form);
    MatrixForm* page = form.tvWallPage();
    page->slotReconnect();
    QCOMPARE(page->tipText(), QStringLiteral("tvwall login..."));
    // The real answer to that login comes first; the crafted one is judged after it.
    QTRY_COMPARE_WITH_TIMEOUT(page->state().link(kIp), MatrixPageState::Link::Lost, scaled(5000));
    page->slotConnectMatrixResult(withHandle ? handleFor(kIp) : QSharedPointer<CSharedHandle>(), code, 0, page);
    QCOMPARE(page->tipText(), tip);
}

void TestPage::linkShowsInTheStrip_data()
{
    QTest::addColumn<int>("code"); // of the login's answer; 0: connected, then lost
    QTest::addColumn<int>("link");
    QTest::addColumn<QString>("strip");
    QTest::newRow("lost") << 0 << int(MatrixPageState::Link::Lost) << "127.0.0.9: connection lost";
    QTest::newRow("refused login, not retried")
        << int(CMATRIX_ERR_PASSWORD) << int(MatrixPageState::Link::Failed) << "127.0.0.9: login failed";
}

void TestPage::linkShowsInTheStrip()
{
    QFETCH(int, code);
    QFETCH(int, link);
    QFETCH(QString, strip);
    MainMatrixForm form;
    settledWallPage(form);
    MatrixForm* page = form.tvWallPage();
    page->slotConnectMatrixResult(handleFor(kIp), code, 0, page);
    if (code == 0) {
        QCOMPARE(page->statusStrip()->text(kIp), QStringLiteral("127.0.0.9: connected"));
        page->slotDisconnectStatus(nullptr, kIp);
        QVERIFY(!page->state().currentHandle());
    }
    QCOMPARE(page->statusStrip()->text(kIp), strip);
    QCOMPARE(int(page->state().link(kIp)), link);
    page->stopReconnecting();
}

void TestPage::reconnectBacksOff_data()
{
    QTest::addColumn<int>("failures");
    QTest::addColumn<int>("delay");
    QTest::newRow("first") << 1 << 1000;
    QTest::newRow("second") << 2 << 2000;
    QTest::newRow("fifth") << 5 << 16000;
    QTest::newRow("sixth, capped") << 6 << 30000;
    QTest::newRow("fortieth, capped") << 40 << 30000;
}

void TestPage::reconnectBacksOff()
{
    QFETCH(int, failures);
    QFETCH(int, delay);
    MatrixPageState state;
    MatrixInfo decoder;
    decoder.ip = kIp;
    QVERIFY(state.setDecoders({ decoder }, kIp));
    int last = 0;
    for (int i = 0; i < failures; ++i)
        last = i % 2 ? state.markLost(kIp) : state.markFailed(kIp);
    QCOMPARE(last, delay);
    // A successful login starts the count again.
    state.markConnected(kIp, handleFor(kIp));
    QCOMPARE(state.markLost(kIp), 1000);
}

KVMS_TEST_CLASS(TestPage)
#include "TestPage.moc"
