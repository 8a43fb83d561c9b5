// Losing the connection, heartbeats, and closing handles while things are in flight.

#include "FakeDecoder.h"
#include "SdkClient.h"
#include "SuiteMain.h"

#include <QtTest>

#include <chrono>
#include <future>
#include <thread>

using namespace cmatrix::wire;
using namespace std::chrono_literals;

namespace {

std::vector<uint8_t> headerBytes(uint32_t magic, uint16_t version, uint32_t length)
{
    WireHeader header;
    header.magic = magic;
    header.version = version;
    header.type = responseOf(MessageType::GetMatrix);
    header.length = length;
    std::vector<uint8_t> bytes(WireHeader::kSize);
    header.encode(bytes.data());
    return bytes;
}

// A GetMatrix call running on its own thread; the future's destructor waits for it.
std::future<int> getMatrixAsync(CMHANDLE handle)
{
    return std::async(std::launch::async, [handle] {
        int cols = 0, rows = 0;
        return CMatrix_GetMatrix(handle, &cols, &rows, nullptr, 0);
    });
}

// Connects another handle and waits for `beats` of its heartbeats at `intervalMs`: time past
// a silence limit, measured by events rather than by a clock.
bool witnessBeats(FakeDecoder& decoder, int intervalMs, int beats)
{
    SdkClient witness;
    witness.setHeartbeat(intervalMs, 10 * intervalMs);
    const int target = decoder.heartbeatsReceived() + beats;
    return witness.connectTo(decoder) == CMATRIX_OK
        && QTest::qWaitFor([&] { return decoder.heartbeatsReceived() >= target; }, 5000);
}

bool hasRequest(const FakeDecoder& decoder, MessageType type)
{
    for (const Message& m : decoder.requests())
        if (m.header.type == uint16_t(type))
            return true;
    return false;
}

} // namespace

class TestConnectionLoss : public QObject {
    Q_OBJECT

private slots:
    void lossIsReportedOnce_data()
    {
        QTest::addColumn<QString>("fault");
        QTest::newRow("oversized length") << "oversized";
        QTest::newRow("garbage after an answer") << "trailing";
    }

    void lossIsReportedOnce()
    {
        QFETCH(QString, fault);
        FakeDecoder decoder;
        decoder.setHandler([&](const Message& request, FakeDecoder& d) {
            if (request.header.type != uint16_t(MessageType::GetMatrix))
                return d.answerPlainly(request);
            // The fault strikes while the call waits for its answer.
            if (fault == "oversized")
                d.sendRaw(headerBytes(WireHeader::kMagic, WireHeader::kVersion, WireHeader::kMaxPayload + 1));
        });
        SdkClient client;
        client.setHeartbeat(100, 500);
        QCOMPARE(client.connectTo(decoder), CMATRIX_OK);
        QCOMPARE(CMatrix_SetTimeout(client.handle(), 10000), CMATRIX_OK);
        if (fault == "trailing") { // one good answer first, so the stream was in sync
            int cols = 0, rows = 0;
            decoder.setHandler([&](const Message& request, FakeDecoder& d) {
                d.answerPlainly(request);
                if (request.header.type == uint16_t(MessageType::GetMatrix))
                    d.sendRaw(headerBytes(0x12345678, WireHeader::kVersion, 0));
            });
            QCOMPARE(CMatrix_GetMatrix(client.handle(), &cols, &rows, nullptr, 0), CMATRIX_OK);
            QTRY_COMPARE_WITH_TIMEOUT(client.losses(), 1, 5000);
        } else {
            auto pending = getMatrixAsync(client.handle());
            QTRY_COMPARE_WITH_TIMEOUT(client.losses(), 1, 5000);
            QCOMPARE(pending.wait_for(2s), std::future_status::ready);
            QCOMPARE(pending.get(), CMATRIX_ERR_DISCONNECTED);
        }

        int cols = 0, rows = 0;
        QCOMPARE(CMatrix_GetMatrix(client.handle(), &cols, &rows, nullptr, 0), CMATRIX_ERR_DISCONNECTED);
        QVERIFY(witnessBeats(decoder, 100, 7)); // past the silence limit: a second report would have come
        QCOMPARE(client.losses(), 1);
        QCOMPARE(client.strayCallbacks(), 0);
    }

    void closingOnPurposeIsSilent_data()
    {
        QTest::addColumn<bool>("destroy");
        QTest::newRow("disconnect") << false;
        QTest::newRow("destroy") << true;
    }

    void closingOnPurposeIsSilent()
    {
        QFETCH(bool, destroy);
        FakeDecoder decoder;
        decoder.setHandler([](const Message& request, FakeDecoder& d) {
            if (request.header.type != uint16_t(MessageType::GetMatrix)) // left waiting
                d.answerPlainly(request);
        });
        SdkClient client;
        client.setHeartbeat(50, 300);
        QCOMPARE(client.connectTo(decoder), CMATRIX_OK);
        auto pending = getMatrixAsync(client.handle());
        QTRY_VERIFY(hasRequest(decoder, MessageType::GetMatrix));

        QCOMPARE(destroy ? client.destroy() : CMatrix_Disconnect(client.handle()), CMATRIX_OK);
        // Ended at once, not by its own timeout.
        QCOMPARE(pending.wait_for(1s), std::future_status::ready);
        QCOMPARE(pending.get(), CMATRIX_ERR_DISCONNECTED);
        decoder.dropClient();
        QVERIFY(witnessBeats(decoder, 50, 8)); // past the silence limit
        QCOMPARE(client.losses(), 0);
        if (!destroy) {
            QVERIFY(hasRequest(decoder, MessageType::Logout));
            QCOMPARE(client.connectTo(decoder), CMATRIX_OK); // the handle is reusable
        }
    }

    void callbackMayCloseTheHandle_data()
    {
        QTest::addColumn<QString>("action");
        QTest::newRow("destroy") << "destroy";
        QTest::newRow("disconnect") << "disconnect";
        QTest::newRow("reconnect") << "reconnect";
    }

    void callbackMayCloseTheHandle()
    {
        QFETCH(QString, action);
        FakeDecoder decoder;
        SdkClient client;
        QCOMPARE(client.connectTo(decoder), CMATRIX_OK);
        const CMHANDLE handle = client.handle();
        std::atomic<int> result { 1 };
        client.onLoss([&] {
            if (action == "destroy")
                result = CMatrix_Destroy(handle);
            else if (action == "disconnect")
                result = CMatrix_Disconnect(handle);
            else
                result = client.connectTo(decoder);
        });
        decoder.dropClient();
        QTRY_COMPARE_WITH_TIMEOUT(result.load(), CMATRIX_OK, 5000);
        int cols = 0, rows = 0;
        const int expected = action == "destroy" ? CMATRIX_ERR_INVALID_HANDLE
            : action == "disconnect"             ? CMATRIX_ERR_FAILED
                                                 : CMATRIX_OK;
        QCOMPARE(CMatrix_GetMatrix(handle, &cols, &rows, nullptr, 0), expected);
        QCOMPARE(client.losses(), 1);
    }

    void destroyWaitsForRunningCallback()
    {
        FakeDecoder decoder;
        SdkClient client;
        QCOMPARE(client.connectTo(decoder), CMATRIX_OK);
        std::atomic<bool> inside { false };
        std::atomic<bool> finished { false };
        client.onLoss([&] {
            inside = true;
            std::this_thread::sleep_for(300ms);
            finished = true;
        });
        decoder.dropClient();
        QTRY_VERIFY_WITH_TIMEOUT(inside.load(), 5000);
        QCOMPARE(client.destroy(), CMATRIX_OK);
        QVERIFY2(finished.load(), "the callback may not outlive Destroy");
    }
};

KVMS_TEST_CLASS(TestConnectionLoss)

#include "TestConnectionLoss.moc"
