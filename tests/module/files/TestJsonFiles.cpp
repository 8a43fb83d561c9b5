#include "FilesRig.h"

#include "SuiteMain.h"

#include "MatrixSdkWorker.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QtTest>

#include <csignal>
#include <sys/resource.h>

using namespace kvms_matrix;

class TestJsonFiles : public QObject, public FilesRig {
    Q_OBJECT

private slots:
    void init() { QVERIFY(enter()); }
    void cleanup() { leave(); }
    void decoderListRoundTrip_data();
    void decoderListRoundTrip();
    void readLists_data();
    void readLists();
    void lastConnectedKeepsListAndLeavesOldTail();
    void failedListWriteKeepsTheOldFile_data();
    void failedListWriteKeepsTheOldFile();
    void tvWallRoundTrip();
};

namespace {

MatrixInfo decoder(int type, const QString& id, const QString& ip)
{
    MatrixInfo info;
    info.type = type;
    info.id = id;
    info.ip = ip;
    info.port = 9000;
    info.nvr_port = 7;
    info.manager_port = 8000;
    info.username = QStringLiteral("admin");
    info.password = QString::fromUtf8("p\xC3\xA4ss\"w");
    info.status = 1;
    info.screenCnt = 4;
    info.connect_state = 2;
    info.version = QStringLiteral("V1.2");
    return info;
}

// The JSON of decoder(2, "u1", "127.0.0.2") with keys in the compact writer's order.
const QByteArray kTenKeys = R"({"id":"u1","ip":"127.0.0.2","manager_port":8000,"nvr_port":7,)"
                            R"("password":"p)"
                            "\xC3\xA4"
                            R"(ss\"w","port":9000,"status":1,"type":2,"username":"admin","version":"V1.2"})";

enum Reader { MatrixList, DecoderList, WallList };

// "key=id" of every decoder read, "key=main_decoder_ip" of every wall.
QStringList entriesRead(Reader reader)
{
    QStringList entries;
    if (reader == WallList) {
        const auto walls = MatrixSdkWorker::getMatrixFromJson();
        for (auto it = walls.begin(); it != walls.end(); ++it)
            entries << it.key() + QLatin1Char('=') + it->main_decoder_ip;
        return entries;
    }
    const auto decoders
        = reader == MatrixList ? MatrixSdkWorker::getAllOneMatrixFromJson() : MatrixSdkWorker::getDecoderFromJson();
    for (auto it = decoders.begin(); it != decoders.end(); ++it)
        entries << it.key() + QLatin1Char('=') + it->id;
    return entries;
}

const char* fileOf(Reader reader)
{
    return reader == MatrixList ? "matrixConfig.json"
        : reader == DecoderList ? "decoderConfig.json"
                                : "tvWallConfig.json";
}

} // namespace

Q_DECLARE_METATYPE(Reader)

void TestJsonFiles::decoderListRoundTrip_data()
{
    QTest::addColumn<Reader>("reader");
    QTest::addColumn<QByteArray>("expectedText");

    QByteArray twelve = kTenKeys;
    twelve.replace(R"("port":9000,)", R"("port":9000,"screenCnt":4,)");
    twelve.replace(R"("id":"u1",)", R"("connect_state":2,"id":"u1",)");
    QTest::newRow("matrixConfig.json") << MatrixList << QByteArray(R"({"matrixList":[)" + kTenKeys + "]}");
    QTest::newRow("decoderConfig.json") << DecoderList << QByteArray(R"({"matrixList":[)" + twelve + "]}");
}

void TestJsonFiles::decoderListRoundTrip()
{
    QFETCH(Reader, reader);
    QFETCH(QByteArray, expectedText);
    const bool decoders = reader == DecoderList;
    const auto write = [&](const QList<MatrixInfo>& list) {
        decoders ? MatrixSdkWorker::addDecoderToJson(list) : MatrixSdkWorker::addAllOneMatrixToJson(list);
    };

    write({ decoder(2, QStringLiteral("u1"), QStringLiteral("127.0.0.2")) });
    QCOMPARE(contentOf(fileOf(reader)), expectedText);
    // Read back and written again, the text is the same: every field survives the reader.
    QCOMPARE(entriesRead(reader), QStringList { QStringLiteral("127.0.0.2=u1") });
    write((decoders ? MatrixSdkWorker::getDecoderFromJson() : MatrixSdkWorker::getAllOneMatrixFromJson()).values());
    QCOMPARE(contentOf(fileOf(reader)), expectedText);
}

void TestJsonFiles::readLists_data()
{
    QTest::addColumn<Reader>("reader");
    QTest::addColumn<QByteArray>("text"); // null: no file
    QTest::addColumn<QStringList>("expected");

    const QStringList none;
    const QByteArray one = R"({"ip":"127.0.0.2","id":"a","name":"w1","main_decoder_ip":"a"})";
    for (Reader reader : { MatrixList, DecoderList, WallList }) {
        const QString key = reader == WallList ? QStringLiteral("w1") : QStringLiteral("127.0.0.2");
        auto row = [&](const char* what) -> QTestData& {
            return QTest::newRow(qPrintable(QStringLiteral("%1: %2").arg(fileOf(reader), what))) << reader;
        };
        row("missing file") << QByteArray() << none;
        row("truncated") << QByteArray(R"({"matrixList":[)" + one) << none;
        row("element not an object") << QByteArray(R"({"matrixList":[5]})") << QStringList { QStringLiteral("=") };
        row("valid") << QByteArray(R"({"matrixList":[)" + one + "]}") << QStringList { key + QStringLiteral("=a") };
    }
    // The same decoder (or wall name) twice: the later entry wins.
    const QByteArray twice = R"({"matrixList":[{"ip":"127.0.0.2","id":"first"},{"ip":"127.0.0.3","id":"other"},)"
                             R"({"ip":"127.0.0.2","id":"second"}]})";
    QTest::newRow("matrix: duplicate ip")
        << MatrixList << twice << QStringList { QStringLiteral("127.0.0.2=second"), QStringLiteral("127.0.0.3=other") };
    QTest::newRow("wall: duplicate name")
        << WallList
        << QByteArray(
               R"({"matrixList":[{"name":"hall","main_decoder_ip":"first"},{"name":"side","main_decoder_ip":"first"},)"
               R"({"name":"hall","main_decoder_ip":"second"}]})")
        << QStringList { QStringLiteral("hall=second"), QStringLiteral("side=first") };
    QTest::newRow("directory in the file's place") << MatrixList << QByteArray("<dir>") << none;
}

void TestJsonFiles::readLists()
{
    QFETCH(Reader, reader);
    QFETCH(QByteArray, text);
    QFETCH(QStringList, expected);
    if (text == "<dir>")
        QVERIFY(QDir().mkdir(fileOf(reader)));
    else if (!text.isNull())
        writeText(fileOf(reader), text);
    QCOMPARE(entriesRead(reader), expected);
}

void TestJsonFiles::lastConnectedKeepsListAndLeavesOldTail()
{
    const QByteArray list = R"({"matrixList":[)" + kTenKeys + "]}";
    MatrixSdkWorker::addAllOneMatrixToJson({ decoder(2, QStringLiteral("u1"), QStringLiteral("127.0.0.2")) });

    MatrixSdkWorker::writeMatrixLastConnectedInfoToJson(
        decoder(2, QStringLiteral("a-rather-long-identifier"), QStringLiteral("127.0.0.2")));
    QByteArray longLast = kTenKeys;
    longLast.replace(R"("u1")", R"("a-rather-long-identifier")");
    const QByteArray full = R"({"lastConnectedMatrixInfo":)" + longLast + R"(,"matrixList":[)" + kTenKeys + "]}";
    QCOMPARE(contentOf("matrixConfig.json"), full);
    QCOMPARE(MatrixSdkWorker::getAllOneMatrixFromJson().size(), 1);

    // A shorter text is written over the start; the rest of the old text stays behind it.
    MatrixSdkWorker::writeMatrixLastConnectedInfoToJson(decoder(2, QStringLiteral("u1"), QStringLiteral("127.0.0.2")));
    const QByteArray shorter = R"({"lastConnectedMatrixInfo":)" + kTenKeys + R"(,"matrixList":[)" + kTenKeys + "]}";
    QCOMPARE(contentOf("matrixConfig.json"), shorter + full.mid(shorter.size()));

    // The file no longer parses: the list reads empty and the next write starts from nothing.
    QVERIFY(MatrixSdkWorker::getAllOneMatrixFromJson().isEmpty());
    QCOMPARE(MatrixSdkWorker::readMatrixLastConnectedInfoFromJson().ip, QString());
    const QByteArray broken = contentOf("matrixConfig.json");
    MatrixSdkWorker::writeMatrixLastConnectedInfoToJson(decoder(2, QStringLiteral("u1"), QStringLiteral("127.0.0.2")));
    const QByteArray alone = R"({"lastConnectedMatrixInfo":)" + kTenKeys + "}";
    QCOMPARE(contentOf("matrixConfig.json"), alone + broken.mid(alone.size()));

    // A list write truncates and so repairs the file.
    MatrixSdkWorker::addAllOneMatrixToJson({ decoder(2, QStringLiteral("u1"), QStringLiteral("127.0.0.2")) });
    QCOMPARE(contentOf("matrixConfig.json"), list);
}

void TestJsonFiles::tvWallRoundTrip()
{
    TvWallManagement hall;
    hall.name = QString::fromUtf8("Hall \xE5\xA4\xA7");
    hall.main_decoder_ip = QStringLiteral("127.0.0.2");
    hall.row = 2;
    hall.column = 3;
    hall.main_type = 1;
    MatrixInfo second = decoder(4, QStringLiteral("ignored"), QStringLiteral("127.0.0.3"));
    second.location = 5;
    hall.second_ip = { second };
    TvWallManagement side; // same main decoder, another wall
    side.name = QStringLiteral("side");
    side.main_decoder_ip = QStringLiteral("127.0.0.2");

    const QByteArray expected
        = R"({"matrixList":[{"column":3,"main_decoder_ip":"127.0.0.2","main_type":1,"name":"Hall )"
          "\xE5\xA4\xA7"
          R"(","row":2,"second_ip":[{"ip":"127.0.0.3","location":5,"type":4}]},)"
          R"({"column":0,"main_decoder_ip":"127.0.0.2","main_type":0,"name":"side","row":0,"second_ip":[]}]})";
    MatrixSdkWorker::addMatrixToJson({ hall, side });
    QCOMPARE(contentOf("tvWallConfig.json"), expected);

    // Keyed by name, so two walls on one main decoder both come back; written again, same text.
    const QMap<QString, TvWallManagement> walls = MatrixSdkWorker::getMatrixFromJson();
    QCOMPARE(walls.keys(), (QStringList { hall.name, side.name }));
    QCOMPARE(walls.first().second_ip.first().id, QString(QChar(0xFFFF))); // only ip, location, type stored
    MatrixSdkWorker::addMatrixToJson(walls.values());
    QCOMPARE(contentOf("tvWallConfig.json"), expected);
}

void TestJsonFiles::failedListWriteKeepsTheOldFile_data()
{
    QTest::addColumn<int>("reader");
    QTest::newRow("decoderConfig.json") << int(DecoderList);
    QTest::newRow("tvWallConfig.json") << int(WallList);
}

void TestJsonFiles::failedListWriteKeepsTheOldFile()
{
    QFETCH(int, reader);
    const auto write = [reader](int count) {
        QList<MatrixInfo> decoders;
        QList<TvWallManagement> walls;
        for (int i = 0; i < count; ++i) {
            decoders << decoder(1, QStringLiteral("u%1").arg(i), QStringLiteral("127.0.0.%1").arg(i + 1));
            TvWallManagement wall;
            wall.name = QStringLiteral("wall %1").arg(i);
            wall.main_decoder_ip = decoders.last().ip;
            walls << wall;
        }
        if (reader == WallList)
            MatrixSdkWorker::addMatrixToJson(walls);
        else
            MatrixSdkWorker::addDecoderToJson(decoders);
    };
    write(2);
    const QStringList before = entriesRead(Reader(reader));
    QCOMPARE(before.size(), 2);

    // The disk fills up halfway through the next write (a file size limit does the same here,
    // even for root): the list written before must still be there, whole.
    struct rlimit old { };
    QCOMPARE(getrlimit(RLIMIT_FSIZE, &old), 0);
    struct rlimit small = old;
    small.rlim_cur = QFileInfo(QString::fromLatin1(fileOf(Reader(reader)))).size() + 64;
    const sighandler_t oldHandler = signal(SIGXFSZ, SIG_IGN);
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &small), 0);
    write(100);
    setrlimit(RLIMIT_FSIZE, &old);
    signal(SIGXFSZ, oldHandler);
    QCOMPARE(entriesRead(Reader(reader)), before);
}

KVMS_TEST_CLASS(TestJsonFiles)
#include "TestJsonFiles.moc"
