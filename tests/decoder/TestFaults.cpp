#include "DecoderTests.h"
#include "TestTimeout.h"
#include "WireRecords.h"

#include <QElapsedTimer>
#include <QtTest>

using namespace cmatrix::wire;
using namespace wirerecords;
using kvmstest::TestClient;

void DecoderTests::lateAnswersAndDrops()
{
    vdec::VirtualDecoder* d = fixture_.startDecoder(18);
    TestClient* c = fixture_.connectTo(d);
    QVERIFY(c);

    // A late answer does not hold up the answers after it.
    d->faults().answerLate(MessageType::SetMatrix, 800);
    QElapsedTimer clock;
    clock.start();
    const uint32_t late
        = c->sendRequest(uint16_t(MessageType::SetMatrix), TestClient::encodeBody(MatrixGeometry { 5, 5, "Late" }));
    QCOMPARE(c->call(MessageType::GetMatrix, Empty {}), CMATRIX_OK);
    Message m;
    QCOMPARE(c->receive(m, 0), TestClient::Wait::Timeout);
    QCOMPARE(d->snapshot().cols, 5); // carried out at once, only answered late
    QCOMPARE(c->receive(m, kvmstest::scaled(2000)), TestClient::Wait::Message);
    QCOMPARE(m.header.requestId, late);
    QCOMPARE(m.header.status, CMATRIX_OK);
    QVERIFY(clock.elapsed() >= 800);

    // After n more requests the next one closes the connection unanswered.
    d->faults().answerLate(MessageType::SetMatrix, 0);
    d->faults().dropConnectionAfter(1);
    QVERIFY(c->sendHeartbeat()); // heartbeats do not count
    QCOMPARE(c->call(MessageType::GetMatrix, Empty {}), CMATRIX_OK);
    QCOMPARE(c->call(MessageType::GetMatrix, Empty {}), CMATRIX_ERR_DISCONNECTED);
    TestClient* next = fixture_.connectTo(d);
    QVERIFY(next);
    QCOMPARE(next->call(MessageType::GetMatrix, Empty {}), CMATRIX_OK);

    // A muted decoder sends no heartbeats.
    d->faults().muteHeartbeats(true);
    const int before = next->heartbeatsReceived();
    QCOMPARE(next->receive(m, 1500), TestClient::Wait::Timeout);
    QCOMPARE(next->heartbeatsReceived(), before);
}
