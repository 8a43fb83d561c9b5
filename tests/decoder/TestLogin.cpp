#include "DecoderFixture.h"
#include "SuiteMain.h"
#include "WireRecords.h"

#include <QtTest>

using namespace cmatrix::wire;
using kvmstest::TestClient;

namespace {

QString passwordError(int failed, int allowed, int lockSeconds)
{
    return QStringLiteral(R"({"ERRCODE":"PASSWDERR","PARAM":{"ERRNUM":%1,"SUMNUM":%2,"LOCKTIME":%3}})")
        .arg(failed)
        .arg(allowed)
        .arg(lockSeconds);
}

} // namespace

class TestLogin : public QObject {
    Q_OBJECT

    kvmstest::DecoderFixture fixture_;

private slots:
    void cleanup() { fixture_.cleanup(); }

    void unknownUserAnswersAsWrongPassword()
    {
        TestClient* c = fixture_.connectTo(fixture_.startDecoder(), false);
        QVERIFY(c);
        // So that names cannot be probed.
        QString json;
        QCOMPARE(c->login("operator", "admin123", &json), CMATRIX_ERR_PASSWORD);
        QCOMPARE(json, passwordError(1, 5, 600));
        QCOMPARE(c->call(MessageType::GetMatrix, Empty {}), CMATRIX_ERR_NOT_LOGGED_IN);
    }

    void requestsBeforeLogin_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QByteArray>("payload");

        const auto add = WindowAddRequest { { wirerecords::window(1, 0, 0, 100, 100) }, false };
        const TestClient::Bytes addBytes = TestClient::encodeBody(add);
        QTest::newRow("WindowAdd") << int(MessageType::WindowAdd)
                                   << QByteArray(reinterpret_cast<const char*>(addBytes.data()), int(addBytes.size()));
        QTest::newRow("malformed payload") << int(MessageType::SetMatrix) << QByteArray("\x01", 1);
    }

    void requestsBeforeLogin()
    {
        QFETCH(int, type);
        QFETCH(QByteArray, payload);

        vdec::VirtualDecoder* d = fixture_.startDecoder();
        TestClient* c = fixture_.connectTo(d, false);
        QVERIFY(c);
        const TestClient::Bytes bytes(payload.begin(), payload.end());
        QCOMPARE(c->callRaw(uint16_t(type), bytes), CMATRIX_ERR_NOT_LOGGED_IN);
        QVERIFY(d->snapshot().windows.empty());

        // A logout ends the session but not the connection.
        QCOMPARE(c->login("admin", "admin123"), CMATRIX_OK);
        QCOMPARE(c->call(MessageType::Logout, Empty {}), CMATRIX_OK);
        QCOMPARE(c->callRaw(uint16_t(type), bytes), CMATRIX_ERR_NOT_LOGGED_IN);
    }

    void unknownRequestsAfterLogin()
    {
        TestClient* c = fixture_.connectTo(fixture_.startDecoder());
        QVERIFY(c);
        QCOMPARE(c->callRaw(0x0777, {}), CMATRIX_ERR_NOT_SUPPORTED);
        QCOMPARE(c->callRaw(0x003F, {}), CMATRIX_ERR_NOT_SUPPORTED); // a free code amid the scene requests
        // A heartbeat is never answered, before or after a login, and keeps the connection.
        QVERIFY(c->sendHeartbeat());
        Message m;
        QCOMPARE(c->receive(m, 200), TestClient::Wait::Timeout);
        QCOMPARE(c->call(MessageType::GetMatrix, Empty {}), CMATRIX_OK);
    }
};

KVMS_TEST_CLASS(TestLogin)
#include "TestLogin.moc"
