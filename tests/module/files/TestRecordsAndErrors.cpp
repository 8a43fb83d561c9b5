#include "FilesRig.h"

#include "SuiteMain.h"

#include "CMatrixSDK.h"
#include "ErrorTexts.h"
#include "LogInfo.h"
#include "MatrixInfo.h"
#include "MatrixSdkWorker.h"
#include "SdkCallLog.h"

#include <QRegularExpression>
#include <QtTest>

using namespace kvms_matrix;

class TestRecordsAndErrors : public QObject, public FilesRig {
    Q_OBJECT

private slots:
    void init() { QVERIFY(enter()); }
    void cleanup() { leave(); }
    void errorTable_data();
    void errorTable();
    void shippedErrorTableMatchesSdk();
    void loginError_data();
    void loginError();
    void callLog_data();
    void callLog();
};

void TestRecordsAndErrors::errorTable_data()
{
    QTest::addColumn<QByteArray>("xml"); // empty: no file at all
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("expected");

    const QByteArray table = R"(<?xml version="1.0" encoding="UTF-8"?>
<ErrorCodeInfo>
  <ErrorCode CodeValue="0" ErrorDescripZH="Success"/>
  <ErrorCode CodeValue="-7" ErrorDescripZH="Incorrect user name or password"/>
  <ErrorCode CodeValue="-7" ErrorDescripZH="second entry of the same code"/>
  <Other CodeValue="-8" ErrorDescripZH="under another name"/>
  <ErrorCode CodeValue="-9"/>
  <ErrorCode ErrorDescripZH="no code value"/>
  <Group><ErrorCode CodeValue="-10" ErrorDescripZH="nested"/></Group>
</ErrorCodeInfo>
)";
    QTest::newRow("match") << table << -7 << "Incorrect user name or password";
    QTest::newRow("unknown code") << table << -99 << "-99";
    QTest::newRow("sibling of another name") << table << -8 << "under another name";
    QTest::newRow("nested entry not walked") << table << -10 << "-10";
    QTest::newRow("walk starts at first ErrorCode") << QByteArray(
        R"(<T><Other CodeValue="-3" ErrorDescripZH="x"/><ErrorCode CodeValue="1" ErrorDescripZH="y"/></T>)")
                                                    << -3 << "-3";
    QTest::newRow("missing file") << QByteArray() << -7 << "-7";
    QTest::newRow("broken xml") << QByteArray(R"(<T><ErrorCode CodeValue="-7" ErrorDescripZH="x"/>)") << -7 << "-7";
}

void TestRecordsAndErrors::errorTable()
{
    QFETCH(QByteArray, xml);
    QFETCH(int, code);
    QFETCH(QString, expected);
    const QString path = m_dir->filePath(QStringLiteral("table.xml"));
    if (!xml.isEmpty())
        writeText(path, xml);
    QCOMPARE(ErrorTexts::describe(code, path), expected);
}

void TestRecordsAndErrors::shippedErrorTableMatchesSdk()
{
    // The table the build copies beside the programs: every code the SDK knows reads as its text.
    const CMatrixErrorInfo* table = nullptr;
    const int count = CMatrix_GetErrorTable(&table);
    QVERIFY(count > 0 && table);
    for (int i = 0; i < count; ++i)
        QCOMPARE(MatrixSdkWorker::getErrorInfo(table[i].code), QString::fromUtf8(table[i].description));
    QCOMPARE(MatrixSdkWorker::getErrorInfo(-100000), QStringLiteral("-100000"));
}

void TestRecordsAndErrors::loginError_data()
{
    QTest::addColumn<QByteArray>("text"); // null: a null pointer is passed
    QTest::addColumn<ConnectErrorMsgInfo>("expected");

    // Every row starts from this record, so "left as it is" and "only the code" can be told apart.
    const ConnectErrorMsgInfo old { QStringLiteral("old"), 9, 9, 9, 9 };
    auto with = [&](const char* code, int errNum, int sumNum, int lockTime, int unlockTime) {
        return ConnectErrorMsgInfo { QString::fromLatin1(code), errNum, sumNum, lockTime, unlockTime };
    };

    // Wrong-password counts and lock minutes come from a decoder in the worker suite.
    QTest::newRow("locked") << QByteArray(R"({"ERRCODE":"USERLOCK","PARAM":{"UNLOCKTIME":125}})")
                            << with("USERLOCK", 9, 9, 9, 125);
    QTest::newRow("locked ignores attempt counts")
        << QByteArray(R"({"ERRCODE":"USERLOCK","PARAM":{"ERRNUM":4,"UNLOCKTIME":7}})") << with("USERLOCK", 9, 9, 9, 7);
    QTest::newRow("other code") << QByteArray(R"({"ERRCODE":"NOUSER","PARAM":{"ERRNUM":4,"UNLOCKTIME":7}})")
                                << with("NOUSER", 9, 9, 9, 9);
    QTest::newRow("truncated") << QByteArray(R"({"ERRCODE":"PASSWDERR","PARAM":{"ERRNUM":2)") << old;
    QTest::newRow("null pointer") << QByteArray() << old;
}

void TestRecordsAndErrors::loginError()
{
    QFETCH(QByteArray, text);
    QFETCH(ConnectErrorMsgInfo, expected);
    ConnectErrorMsgInfo info { QStringLiteral("old"), 9, 9, 9, 9 };
    MatrixSdkWorker::parseConnectErrorMsg(text.isNull() ? nullptr : text.constData(), info);
    const auto fields = [](const ConnectErrorMsgInfo& i) {
        return QVariantList { i.errCode, i.errNum, i.sumNum, i.lockTime, i.unlockTime };
    };
    QCOMPARE(fields(info), fields(expected));
}

void TestRecordsAndErrors::callLog_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("expected"); // the logged text after the log's own stamp; TIME: the local time

    QTest::newRow("call") << 0 << QByteArray("CMatrix_Connect") << -5 << "{ funcName = CMatrix_Connect , ret = -5 }";
    QTest::newRow("event, two blanks") << 1 << QByteArray("matrixConnectStatusCallback") << 0
                                       << "{ funcName = matrixConnectStatusCallback  , event = 0 }";
    QTest::newRow("call with time") << 2 << QByteArray("CMatrix_StopMediaDistribute") << -3
                                    << "{ funcName = CMatrix_StopMediaDistribute , ret = -3 , time = TIME }";
    QTest::newRow("name holding a placeholder") << 0 << QByteArray("f%2") << 7 << "{ funcName = f%2 , ret = 7 }";
}

void TestRecordsAndErrors::callLog()
{
    QFETCH(int, kind);
    QFETCH(QByteArray, name);
    QFETCH(int, value);
    QFETCH(QString, expected);

    const QString logPath = m_dir->filePath(QStringLiteral("sdk.log"));
    vms_sdk::set_log_file(logPath);
    if (kind == 0)
        SdkCallLog::call(name.constData(), value);
    else if (kind == 1)
        SdkCallLog::event(name.constData(), value);
    else
        SdkCallLog::callAt(name.constData(), value);
    vms_sdk::set_log_file(QString());

    const QString time = QStringLiteral("\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d");
    const QRegularExpression line(QLatin1Char('^') + time + QStringLiteral("\\.\\d{3} ")
        + QRegularExpression::escape(expected).replace(QStringLiteral("TIME"), time) + QStringLiteral("\n$"));
    const QString text = QString::fromUtf8(contentOf(logPath));
    QVERIFY2(line.match(text).hasMatch(), qPrintable(text));
}

KVMS_TEST_CLASS(TestRecordsAndErrors)
#include "TestRecordsAndErrors.moc"
