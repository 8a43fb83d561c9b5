// The parts of the page: how a wall's cells are shared out, the login dialog and the host's
// catalogue.
#include "PageRig.h"
#include "SuiteMain.h"
#include "TestTimeout.h"

#include "HostCatalogue.h"
#include "LoginDlg.h"
#include "MainMatrixForm.h"
#include "MatrixForm.h"
#include "WallConfigStore.h"

#include "DevsMgrData.h"
#include "KSingleton.h"
#include "MatrixData.h"
#include "SystemAssistant.h"

#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

using namespace kvms_matrix;
using kvmstest::scaled;

class TestPagePieces : public QObject, public PageRig {
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(setUp()); }
    void init() { clearFiles(); }
    void cleanupTestCase() { tearDown(); }
    void layoutSharesTheCells_data();
    void layoutSharesTheCells();
    void failedLoginFromTheDialogIsTold();
    void catalogueGivesStreams();
};

namespace {

const char* const kCatalogue = R"({"devices":[
  {"id":"CAM1","name":"Lobby camera","ip":"127.0.0.1","port":8554,"user":"u","password":"p",
   "channels":[{"channel":1,"name":"Lobby","main":"rtsp://127.0.0.1:8554/cam1/main"}]},
  {"id":"CAM2","name":"Car park camera","channels":[{"channel":2,"name":"Car park"}]}],
 "streams":[{"name":"Gate","url":"rtsp://127.0.0.1:8554/gate"}]})";

QList<int> numbers(const QString& text)
{
    QList<int> list;
    for (const QString& part : text.split(QLatin1Char(','), Qt::SkipEmptyParts))
        list.append(part.toInt());
    return list;
}

MatrixInfo decoderAt(int n)
{
    MatrixInfo d;
    d.ip = QStringLiteral("127.0.0.%1").arg(n);
    return d;
}

} // namespace

void TestPagePieces::layoutSharesTheCells_data()
{
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("cols");
    QTest::addColumn<int>("decoders");
    QTest::addColumn<QString>("counts"); // screens per decoder
    QTest::addColumn<QString>("locations"); // first cell per decoder
    QTest::newRow("2 x 2 by two") << 2 << 2 << 2 << "2,2"
                                  << "0,2";
    QTest::newRow("1 x 3 by two") << 1 << 3 << 2 << "2,1"
                                  << "0,2";
    QTest::newRow("more decoders than cells") << 1 << 1 << 3 << "1"
                                              << "0";
    QTest::newRow("grid beyond the bound") << 40 << 40 << 1 << "64"
                                           << "0";
    QTest::newRow("no decoder") << 2 << 2 << 0 << ""
                                << "";
}

void TestPagePieces::layoutSharesTheCells()
{
    QFETCH(int, rows);
    QFETCH(int, cols);
    QFETCH(int, decoders);
    QFETCH(QString, counts);
    QFETCH(QString, locations);
    QList<MatrixInfo> list;
    for (int i = 0; i < decoders; ++i)
        list.append(decoderAt(20 + i));
    const QList<MatrixInfo> entries = WallConfigStore::layoutScreens(rows, cols, list);
    QList<int> gotCounts;
    QList<int> gotLocations;
    for (const MatrixInfo& entry : entries) {
        gotCounts.append(entry.screenList.size());
        gotLocations.append(entry.location);
        // Each decoder's screens are numbered from 1 and take consecutive cells.
        for (int n = 0; n < entry.screenList.size(); ++n) {
            QCOMPARE(entry.screenList.at(n).id, entry.ip + QStringLiteral("-%1").arg(n + 1));
            QCOMPARE(entry.screenList.at(n).position, entry.location + n);
        }
    }
    QCOMPARE(gotCounts, numbers(counts));
    QCOMPARE(gotLocations, numbers(locations));
}

void TestPagePieces::failedLoginFromTheDialogIsTold()
{
    MainMatrixForm form;
    settledWallPage(form);
    SystemAssistant::clearRecentMessages();
    QTest::mouseClick(form.tvWallPage()->loginButton(), Qt::LeftButton);
    LoginDlg* login = form.findChild<LoginDlg*>();
    QVERIFY(login);
    QCOMPARE(login->addressEdit()->text(), nowhere());
    QTest::keyClicks(login->passwordEdit(), QStringLiteral("other"));
    QTest::keyClick(login->passwordEdit(), Qt::Key_Return);
    QTRY_COMPARE_WITH_TIMEOUT(
        SystemAssistant::recentMessages(), QStringList { QStringLiteral("Decoder login failed!") }, scaled(5000));
    form.tvWallPage()->stopReconnecting();
}

void TestPagePieces::catalogueGivesStreams()
{
    QTemporaryDir dir;
    QFile file(dir.filePath(QStringLiteral("catalogue.json")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(kCatalogue);
    file.close();
    QString error;
    QVERIFY2(HostCatalogue::load(file.fileName(), &error), qPrintable(error));
    MatrixStream stream;
    QVERIFY(KCOMMON::KSingleton<MatrixData>::instance()->streamByName(QStringLiteral("Lobby (main)"), &stream));
    QCOMPARE(stream.url, QStringLiteral("rtsp://127.0.0.1:8554/cam1/main"));
    QVERIFY(KCOMMON::KSingleton<MatrixData>::instance()->streamByName(QStringLiteral("Gate"), &stream));
    // A file that is not a catalogue changes nothing.
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write("{\"devices\": [{\"name\": \"no id\"}]}");
    file.close();
    QVERIFY(!HostCatalogue::load(file.fileName(), &error));
    QVERIFY(!error.isEmpty());
    QCOMPARE(KCOMMON::KSingleton<DevsMgrData>::instance()->devices().size(), 2);
    QVERIFY(!HostCatalogue::load(dir.filePath(QStringLiteral("missing.json")), &error));
}

KVMS_TEST_CLASS(TestPagePieces)
#include "TestPagePieces.moc"
