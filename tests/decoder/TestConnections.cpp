// Streams the decoder cannot read, and clients that fall silent.

#include "DecoderFixture.h"
#include "SuiteMain.h"
#include "TestTimeout.h"

#include <QtTest>

using namespace cmatrix::wire;
using kvmstest::TestClient;

Q_DECLARE_METATYPE(TestClient::Bytes)

namespace {

TestClient::Bytes header(uint32_t magic, uint16_t version, uint32_t length)
{
    TestClient::Bytes out(WireHeader::kSize);
    WireHeader h;
    h.magic = magic;
    h.version = version;
    h.type = uint16_t(MessageType::GetMatrix);
    h.requestId = 1;
    h.length = length;
    h.encode(out.data());
    return out;
}

} // namespace

class TestConnections : public QObject {
    Q_OBJECT

    kvmstest::DecoderFixture fixture_;

private slots:
    void cleanup() { fixture_.cleanup(); }

    void brokenStreams_data()
    {
        QTest::addColumn<TestClient::Bytes>("bytes");
        QTest::addColumn<bool>("closedByDecoder");

        QTest::newRow("bad magic") << header(0x4B4D5459, 1, 0) << true;
        QTest::newRow("length over the limit") << header(WireHeader::kMagic, 1, WireHeader::kMaxPayload + 1) << true;
        // Incomplete messages are waited for; the client then goes away.
        TestClient::Bytes truncated = header(WireHeader::kMagic, 1, 100);
        truncated.resize(truncated.size() + 10, 0);
        QTest::newRow("truncated payload") << truncated << false;
    }

    void brokenStreams()
    {
        QFETCH(TestClient::Bytes, bytes);
        QFETCH(bool, closedByDecoder);

        vdec::VirtualDecoder* d = fixture_.startDecoder();
        TestClient* c = fixture_.connectTo(d);
        QVERIFY(c);
        QVERIFY(c->sendBytes(bytes));
        if (closedByDecoder) {
            QVERIFY(c->waitClosed(kvmstest::scaled(2000)));
        } else {
            Message m;
            QCOMPARE(c->receive(m, 300), TestClient::Wait::Timeout);
            c->close();
        }
        QTRY_COMPARE_WITH_TIMEOUT(d->connectionCount(), 0, kvmstest::scaled(2000));
        TestClient* next = fixture_.connectTo(d);
        QVERIFY(next);
        QCOMPARE(next->call(MessageType::GetMatrix, Empty {}), CMATRIX_OK);
    }

    void heartbeatTimeoutClosesSilentClient()
    {
        vdec::VirtualDecoder* d = fixture_.startDecoder(0, [](vdec::DecoderConfig& c) {
            c.heartbeatIntervalMs = 100;
            c.heartbeatTimeoutMs = 600;
        });
        TestClient* silent = fixture_.connectTo(d);
        TestClient* talker = fixture_.connectTo(d);
        QVERIFY(silent && talker);
        // The talker sends heartbeats only: the decoder keeps it, and sends its own, while it
        // closes the silent one.
        for (int i = 0; i < kvmstest::scaled(40) && !silent->waitClosed(0); ++i) {
            QVERIFY(talker->sendHeartbeat());
            Message m;
            QCOMPARE(talker->receive(m, 100), TestClient::Wait::Timeout);
        }
        QVERIFY(talker->heartbeatsReceived() >= 5);
        QCOMPARE(talker->call(MessageType::GetMatrix, Empty {}), CMATRIX_OK);

        QVERIFY(silent->waitClosed(kvmstest::scaled(2000)));
        QVERIFY(silent->heartbeatsReceived() >= 2);
        QCOMPARE(d->connectionCount(), 1);
    }
};

KVMS_TEST_CLASS(TestConnections)
#include "TestConnections.moc"
