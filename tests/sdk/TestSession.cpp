// Handles, login, connect failures and timeouts.

#include "FakeDecoder.h"
#include "SdkClient.h"
#include "SuiteMain.h"

#include <QElapsedTimer>
#include <QtTest>

#include <functional>
#include <string>

using namespace cmatrix::wire;

using DecoderCall = std::function<int(CMHANDLE)>;
Q_DECLARE_METATYPE(DecoderCall)
Q_DECLARE_METATYPE(std::vector<uint8_t>)

namespace {

const std::string kPasswordError = R"({"ERRCODE":"PASSWDERR","PARAM":{"ERRNUM":2,"SUMNUM":5,"LOCKTIME":300}})";

} // namespace

class TestSession : public QObject {
    Q_OBJECT

private slots:
    void login_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<std::vector<uint8_t>>("payload");
        QTest::addColumn<int>("result");
        QTest::addColumn<QString>("errorText"); // empty: GetLoginErrMsg has nothing to tell

        const auto failure = [](const std::string& json) { return FakeDecoder::payloadOf(LoginFailure { json }); };
        QTest::newRow("accepted") << 0 << std::vector<uint8_t>() << CMATRIX_OK << QString();
        QTest::newRow("wrong password") << CMATRIX_ERR_PASSWORD << failure(kPasswordError) << CMATRIX_ERR_PASSWORD
                                        << QString::fromStdString(kPasswordError);
        QTest::newRow("refused, cut text")
            << CMATRIX_ERR_PASSWORD << std::vector<uint8_t> { 0, 0, 0, 9, '{' } << CMATRIX_ERR_PASSWORD << QString();
        QTest::newRow("accepted with junk") << 0 << std::vector<uint8_t> { 1, 2 } << CMATRIX_ERR_PROTOCOL << QString();
    }

    void login()
    {
        QFETCH(int, status);
        QFETCH(std::vector<uint8_t>, payload);
        QFETCH(int, result);
        QFETCH(QString, errorText);
        FakeDecoder decoder;
        decoder.setHandler([&](const Message& request, FakeDecoder& d) {
            if (request.header.type == uint16_t(MessageType::Login))
                d.replyBytes(request, status, payload);
            else
                d.reply(request);
        });
        SdkClient client;
        QCOMPARE(client.connectTo(decoder), result);

        const auto requests = decoder.requests();
        QVERIFY(!requests.empty());
        LoginRequest sent;
        QVERIFY(requests.front().decode(sent));
        QCOMPARE(sent.user, std::string("admin"));
        QCOMPARE(sent.password, std::string("secret"));

        char buffer[256] = "untouched";
        const int textResult = CMatrix_GetLoginErrMsg(client.handle(), buffer, sizeof buffer);
        QCOMPARE(textResult, errorText.isEmpty() ? CMATRIX_ERR_FAILED : CMATRIX_OK);
        if (!errorText.isEmpty())
            QCOMPARE(QString::fromUtf8(buffer), errorText);
        // Only a logged-in connection carries calls.
        QCOMPARE(CMatrix_SetTime(client.handle(), 2024, 1, 1, 0, 0, 0), result == CMATRIX_OK ? 0 : CMATRIX_ERR_FAILED);
    }

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

    void connectFailures_data()
    {
        QTest::addColumn<QString>("decoderDoes");
        QTest::addColumn<int>("result");
        QTest::newRow("nothing listening") << "absent" << CMATRIX_ERR_CONNECT;
        QTest::newRow("login never answered") << "silent" << CMATRIX_ERR_TIMEOUT;
        QTest::newRow("closes at login") << "close" << CMATRIX_ERR_DISCONNECTED;
    }

    void connectFailures()
    {
        QFETCH(QString, decoderDoes);
        QFETCH(int, result);
        FakeDecoder decoder;
        decoder.setHandler([&](const Message&, FakeDecoder& d) {
            if (decoderDoes == "close")
                d.dropClient();
        });
        SdkClient client;
        const uint16_t port = decoderDoes == "absent" ? FakeDecoder::unusedPort() : decoder.port();
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(client.connect("127.0.0.1", port, "admin", "secret", 400), result);
        QVERIFY2(timer.elapsed() < 2000, "a connect must end near its timeout");
        if (result == CMATRIX_ERR_TIMEOUT)
            QVERIFY(timer.elapsed() >= 350);
        QTest::qWait(100);
        QCOMPARE(client.losses(), 0); // a connect that failed was never up to be lost
    }

    void staleHandle_data()
    {
        QTest::addColumn<DecoderCall>("call");
        static int cols, rows;
        QTest::newRow("GetMatrix") << DecoderCall(
            [](CMHANDLE h) { return CMatrix_GetMatrix(h, &cols, &rows, nullptr, 0); });
        QTest::newRow("Connect") << DecoderCall(
            [](CMHANDLE h) { return CMatrix_Connect(h, "127.0.0.1", 1, "admin", "secret", 100); });
        QTest::newRow("Free") << DecoderCall([](CMHANDLE h) { return CMatrix_Free(h, nullptr); });
        QTest::newRow("Destroy") << DecoderCall([](CMHANDLE h) { return CMatrix_Destroy(h); });
        QTest::newRow("LoginErrMsg") << DecoderCall([](CMHANDLE h) {
            char text[16];
            return CMatrix_GetLoginErrMsg(h, text, sizeof text);
        });
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
