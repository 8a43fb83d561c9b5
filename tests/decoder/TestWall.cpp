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

    void corruptStateStartsFresh_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("not JSON") << QByteArray(R"({"format": 1, "wall": )");
        QTest::newRow("grid out of range") << QByteArray(R"({"format": 1, "accounts": [], "wall": {"cols": 40}})");
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
