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

void DecoderTests::journalRecordsWhatWasSent()
{
    vdec::VirtualDecoder* d = fixture_.startDecoder(20);
    TestClient* a = fixture_.connectTo(d);
    TestClient* b = fixture_.connectTo(d);
    QVERIFY(a && b);
    d->journal().clear();
    const TestClient::Bytes payload = TestClient::encodeBody(MatrixGeometry { 2, 3, "Journal" });
    QCOMPARE(a->callRaw(uint16_t(MessageType::SetMatrix), payload), CMATRIX_OK);
    QCOMPARE(b->call(MessageType::GetMatrix, Empty {}), CMATRIX_OK);
    QCOMPARE(a->call(MessageType::GetMatrix, Empty {}), CMATRIX_OK);

    const std::vector<vdec::JournalEntry> sets = d->journal().entries(MessageType::SetMatrix);
    QCOMPARE(sets.size(), size_t(1));
    QCOMPARE(sets[0].payloadSize, uint32_t(payload.size()));
    const std::vector<vdec::JournalEntry> gets = d->journal().entries(MessageType::GetMatrix);
    QCOMPARE(gets.size(), size_t(2));
    QCOMPARE(gets[0].payloadSize, 0u);
    // Entries tell connections apart and keep request ids and arrival order.
    QVERIFY(gets[0].connectionId != gets[1].connectionId);
    QCOMPARE(gets[1].connectionId, sets[0].connectionId);
    QVERIFY(gets[1].requestId > sets[0].requestId);
    QVERIFY(sets[0].at <= gets[0].at && gets[0].at <= gets[1].at);
    QCOMPARE(d->journal().count(MessageType::GetMatrix), 2);
}
