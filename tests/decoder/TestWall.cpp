#include "DecoderTests.h"
#include "WireRecords.h"

#include <QtTest>

using namespace cmatrix::wire;
using namespace wirerecords;
using kvmstest::TestClient;

void DecoderTests::setMatrixClearsWindowsOnlyOnNewGrid()
{
    vdec::VirtualDecoder* d = nullptr;
    TestClient* c = standardWall(&d);
    QVERIFY(c);
    QCOMPARE(c->call(MessageType::SetScreens, ScreenList { { screen(0, "a"), screen(5, "b"), screen(15, "c") }, true }),
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

void DecoderTests::screensResetAndMerge()
{
    TestClient* c = fixture_.connectTo(fixture_.startDecoder(11));
    QVERIFY(c);
    const ScreenInfo_t s0 = screen(0, "zero"), s1 = screen(1, "one"), s1b = screen(1, "one-b"), s3 = screen(3, "three");
    QCOMPARE(c->call(MessageType::SetScreens, ScreenList { { s1, s0 }, true }), CMATRIX_OK);
    QCOMPARE(c->call(MessageType::SetScreens, ScreenList { { s3, s1b }, false }), CMATRIX_OK);

    ScreenList got;
    QCOMPARE(c->call(MessageType::GetScreens, Empty {}, &got), CMATRIX_OK);
    QCOMPARE(got.screens.size(), size_t(3));
    QCOMPARE(bytesOf(got.screens[0]), bytesOf(s0));
    QCOMPARE(bytesOf(got.screens[1]), bytesOf(s1b));
    QCOMPARE(bytesOf(got.screens[2]), bytesOf(s3));

    QCOMPARE(c->call(MessageType::SetScreens, ScreenList { { s3 }, true }), CMATRIX_OK);
    QCOMPARE(c->call(MessageType::GetScreens, Empty {}, &got), CMATRIX_OK);
    QCOMPARE(got.screens.size(), size_t(1));
    QCOMPARE(bytesOf(got.screens[0]), bytesOf(s3));
}

void DecoderTests::clockAndRole()
{
    vdec::VirtualDecoder* d = fixture_.startDecoder(12);
    TestClient* c = fixture_.connectTo(d);
    QVERIFY(c);
    const QDateTime given = QDateTime::currentDateTime().addSecs(3600);
    const QDate date = given.date();
    const QTime time = given.time();
    QCOMPARE(c->call(MessageType::SetTime,
                 SetTimeRequest { date.year(), date.month(), date.day(), time.hour(), time.minute(), time.second() }),
        CMATRIX_OK);
    const vdec::DecoderSnapshot s = d->snapshot();
    QVERIFY2(qAbs(s.clockOffsetSecs - 3600) <= 5, qPrintable(QString::number(s.clockOffsetSecs)));
    QCOMPARE(s.lastSetTime.date(), date);
    QCOMPARE(s.lastSetTime.time().second(), time.second());

    QCOMPARE(c->call(MessageType::SetStatus, SetStatusRequest { 2, "127.0.0.40" }), CMATRIX_OK);
    QCOMPARE(d->snapshot().status, 2);
    QCOMPARE(d->snapshot().masterIp, QString("127.0.0.40"));
    QCOMPARE(c->call(MessageType::SetStatus, SetStatusRequest { 0, "" }), CMATRIX_OK);
    QCOMPARE(d->snapshot().masterIp, QString());
}

void DecoderTests::statePersistsAcrossRestart()
{
    vdec::VirtualDecoder* d = nullptr;
    TestClient* c = standardWall(&d);
    QVERIFY(c);
    QCOMPARE(c->call(MessageType::SetScreens, ScreenList { { screen(2, "two") }, true }), CMATRIX_OK);
    QCOMPARE(c->call(MessageType::SetStatus, SetStatusRequest { 1, "" }), CMATRIX_OK);
    QCOMPARE(c->call(MessageType::SetTime, SetTimeRequest { 2030, 6, 1, 12, 0, 0 }), CMATRIX_OK);
    QCOMPARE(c->call(MessageType::WindowSetFullScreen, FullScreenRequest { 1, 2, 1 }), CMATRIX_OK);
    QCOMPARE(
        c->call(MessageType::WindowAdd, WindowAddRequest { { window(3, 0, 0, 50, 50, true) }, false }), CMATRIX_OK);
    const QString before = stateText(d->snapshot());
    const quint16 port = d->port();

    QString error;
    QVERIFY2(d->restart(&error), qPrintable(error));
    QCOMPARE(d->port(), port);
    QCOMPARE(stateText(d->snapshot()), before);
    QVERIFY(!c->isOpen() || c->waitClosed(1000));

    // What a client reads back after the power cycle is what it stored.
    TestClient* again = fixture_.connectTo(d);
    QVERIFY(again);
    WindowDevices got;
    QCOMPARE(again->call(MessageType::WindowDeviceGet, WindowIdRequest { 1 }, &got), CMATRIX_OK);
    QCOMPARE(got.devices.size(), size_t(1));
    QCOMPARE(bytesOf(got.devices[0]), bytesOf(source(2, "cam-2")));
    // Saved with an atomic rename: no temporary file is left behind.
    const QStringList files = QFileInfo(d->stateFilePath()).dir().entryList(QDir::Files);
    QCOMPARE(files, QStringList { "state.json" });
}

void DecoderTests::corruptStateStartsFresh_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("not JSON") << QByteArray(R"({"format": 1, "wall": )");
    QTest::newRow("grid out of range") << QByteArray(R"({"format": 1, "accounts": [], "wall": {"cols": 40}})");
    QTest::newRow("unknown format") << QByteArray(R"({"format": 99})");
}

void DecoderTests::corruptStateStartsFresh()
{
    QFETCH(QByteArray, content);
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    QFile file(dir.filePath("state.json"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
    file.close();

    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("starting factory-fresh"));
    vdec::VirtualDecoder* d = fixture_.startDecoder(13, [&](vdec::DecoderConfig& c) { c.stateDir = dir.path(); });
    QVERIFY(d);
    QCOMPARE(d->snapshot().cols, 2);
    QVERIFY(d->snapshot().windows.empty());
    QFile aside(dir.filePath("state.json.corrupt"));
    QVERIFY(aside.open(QIODevice::ReadOnly));
    QCOMPARE(aside.readAll(), content);
    QVERIFY(fixture_.connectTo(d));
}
