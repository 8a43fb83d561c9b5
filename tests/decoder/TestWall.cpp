#include "DecoderFixture.h"
#include "SuiteMain.h"
#include "WireRecords.h"

#include <QtTest>

using namespace cmatrix::wire;
using namespace wirerecords;
using kvmstest::TestClient;

class TestWall : public QObject {
    Q_OBJECT

    kvmstest::DecoderFixture fixture_;

private slots:
    void cleanup() { fixture_.cleanup(); }

    void setMatrixClearsWindowsOnlyOnNewGrid()
    {
        vdec::VirtualDecoder* d = nullptr;
        TestClient* c = standardWall(fixture_, &d);
        QVERIFY(c);
        QCOMPARE(
            c->call(MessageType::SetScreens, ScreenList { { screen(0, "a"), screen(5, "b"), screen(15, "c") }, true }),
            CMATRIX_OK);

        // A new name on the same grid keeps the layout.
        QCOMPARE(c->call(MessageType::SetMatrix, MatrixGeometry { 4, 4, "Hall" }), CMATRIX_OK);
        MatrixGeometry geometry;
        QCOMPARE(c->call(MessageType::GetMatrix, Empty {}, &geometry), CMATRIX_OK);
        QCOMPARE(geometry.name, std::string("Hall"));
        QCOMPARE(d->snapshot().windows.size(), size_t(2));

        // A new grid drops the windows laid on the old one and the screens outside it.
        QCOMPARE(c->call(MessageType::SetMatrix, MatrixGeometry { 3, 2, "Hall" }), CMATRIX_OK);
        QCOMPARE(c->call(MessageType::GetMatrix, Empty {}, &geometry), CMATRIX_OK);
        QCOMPARE(geometry.cols, 3);
        QCOMPARE(geometry.rows, 2);
        const vdec::DecoderSnapshot s = d->snapshot();
        QVERIFY(s.windows.empty());
        QCOMPARE(s.screens.size(), size_t(2));
        QCOMPARE(s.screens[1].position, 5);
    }

    void corruptStateStartsFresh_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("not JSON") << QByteArray(R"({"format": 1, "wall": )");
        QTest::newRow("grid out of range") << QByteArray(R"({"format": 1, "accounts": [], "wall": {"cols": 40}})");
        QTest::newRow("unknown format") << QByteArray(R"({"format": 99})");
    }

    void corruptStateStartsFresh()
    {
        QFETCH(QByteArray, content);
        QTemporaryDir dir;
        QVERIFY(dir.isValid());
        QFile file(dir.filePath("state.json"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
        file.close();

        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("starting factory-fresh"));
        vdec::VirtualDecoder* d = fixture_.startDecoder(0, [&](vdec::DecoderConfig& c) { c.stateDir = dir.path(); });
        QVERIFY(d);
        QCOMPARE(d->snapshot().cols, 2);
        QVERIFY(d->snapshot().windows.empty());
        QFile aside(dir.filePath("state.json.corrupt"));
        QVERIFY(aside.open(QIODevice::ReadOnly));
        QCOMPARE(aside.readAll(), content);
        QVERIFY(fixture_.connectTo(d));
    }
};

KVMS_TEST_CLASS(TestWall)
#include "TestWall.moc"
