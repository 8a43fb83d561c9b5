// Handles and the text of a refused login.

#include "FakeDecoder.h"
#include "SdkClient.h"
#include "SuiteMain.h"

#include <QtTest>

#include <functional>
#include <string>

using namespace cmatrix::wire;

using DecoderCall = std::function<int(CMHANDLE)>;
Q_DECLARE_METATYPE(DecoderCall)

namespace {

const std::string kPasswordError = R"({"ERRCODE":"PASSWDERR","PARAM":{"ERRNUM":2,"SUMNUM":5,"LOCKTIME":300}})";

} // namespace

class TestSession : public QObject {
    Q_OBJECT

private slots:
    void loginErrorIsTruncated_data()
    {
        QTest::addColumn<int>("size");
        QTest::addColumn<int>("result");
        QTest::addColumn<QString>("text");
        QTest::newRow("one short") << int(kPasswordError.size()) << CMATRIX_OK
                                   << QString::fromStdString(kPasswordError.substr(0, kPasswordError.size() - 1));
        QTest::newRow("zero") << 0 << CMATRIX_ERR_INVALID_PARAM << QString("untouched");
    }

    void loginErrorIsTruncated()
    {
        QFETCH(int, size);
        QFETCH(int, result);
        QFETCH(QString, text);
        FakeDecoder decoder;
        decoder.setHandler([](const Message& request, FakeDecoder& d) {
            d.reply(request, CMATRIX_ERR_PASSWORD, LoginFailure { kPasswordError });
        });
        SdkClient client;
        QCOMPARE(client.connectTo(decoder), CMATRIX_ERR_PASSWORD);
        char buffer[256] = "untouched";
        buffer[255] = 'X'; // must survive: only `size` bytes belong to the SDK
        QCOMPARE(CMatrix_GetLoginErrMsg(client.handle(), buffer, size), result);
        QCOMPARE(QString::fromUtf8(buffer), text);
        QCOMPARE(buffer[255], 'X');
        QCOMPARE(CMatrix_GetLoginErrMsg(client.handle(), nullptr, 10), CMATRIX_ERR_INVALID_PARAM);

        // A later connect that fails for another reason leaves no stale text behind.
        decoder.setHandler([](const Message&, FakeDecoder& d) { d.dropClient(); });
        QCOMPARE(client.connectTo(decoder), CMATRIX_ERR_DISCONNECTED);
        QCOMPARE(CMatrix_GetLoginErrMsg(client.handle(), buffer, 256), CMATRIX_ERR_FAILED);
    }

    void staleHandle_data()
    {
        QTest::addColumn<DecoderCall>("call");
        static int cols, rows;
        QTest::newRow("GetMatrix") << DecoderCall(
            [](CMHANDLE h) { return CMatrix_GetMatrix(h, &cols, &rows, nullptr, 0); });
        QTest::newRow("Free") << DecoderCall([](CMHANDLE h) { return CMatrix_Free(h, nullptr); });
        QTest::newRow("Destroy") << DecoderCall([](CMHANDLE h) { return CMatrix_Destroy(h); });
    }

    void staleHandle()
    {
        QFETCH(DecoderCall, call);
        FakeDecoder decoder;
        SdkClient client;
        QCOMPARE(client.connectTo(decoder), CMATRIX_OK);
        CMHANDLE stale = client.handle();
        QCOMPARE(client.destroy(), CMATRIX_OK);
        SdkClient other; // a handle created later must not revive the stale one
        QVERIFY(other.handle() != stale);
        QCOMPARE(call(stale), CMATRIX_ERR_INVALID_HANDLE);
        QCOMPARE(call(nullptr), CMATRIX_ERR_INVALID_HANDLE);
        QCOMPARE(call(reinterpret_cast<CMHANDLE>(&decoder)), CMATRIX_ERR_INVALID_HANDLE);
    }
};

KVMS_TEST_CLASS(TestSession)

#include "TestSession.moc"
