// Wall and window calls: lists handed out, answers a decoder should never send, refused
// arguments and calls from several threads at once.

#include "FakeDecoder.h"
#include "RawUdp.h"
#include "SdkClient.h"
#include "SuiteMain.h"
#include "WireBuilders.h"

#include <QtTest>

#include <climits>
#include <cstring>
#include <functional>
#include <future>
#include <memory>
#include <thread>
#include <vector>

using namespace cmatrix::wire;
using kvmstest::setText;

using DecoderCall = std::function<int(CMHANDLE)>;
Q_DECLARE_METATYPE(DecoderCall)
Q_DECLARE_METATYPE(std::vector<uint8_t>)

namespace {

std::vector<ScreenInfo_t> someScreens()
{
    std::vector<ScreenInfo_t> screens(2);
    setText(screens[0].name, "left");
    setText(screens[0].ip, "127.0.0.5");
    screens[0].port = 9000;
    screens[1].outputIndex = 3;
    screens[1].position = 7;
    return screens;
}

std::vector<DeviceInfo_t> someDevices(int count)
{
    std::vector<DeviceInfo_t> devices(static_cast<size_t>(count));
    for (int i = 0; i < count; ++i) {
        DeviceInfo_t& device = devices[static_cast<size_t>(i)];
        device.subWindow = i + 1;
        device.channel = 100 + i;
        setText(device.devId, "cam-7");
        setText(device.mainUrl, "rtsp://127.0.0.3/main");
    }
    return devices;
}

// Requests to `type` get one odd answer, then the plain answer.
struct OneOddAnswer {
    uint16_t type;
    int32_t status;
    std::vector<uint8_t> payload;
    uint16_t answerType;
    std::shared_ptr<bool> used = std::make_shared<bool>(false); // handlers are copied

    void operator()(const Message& request, FakeDecoder& d)
    {
        if (request.header.type != type || *used)
            return d.answerPlainly(request);
        *used = true;
        d.sendRaw(RawUdp::message(answerType, request.header.requestId, status, payload));
    }
};

} // namespace

class TestCalls : public QObject {
    Q_OBJECT

private slots:
    void listsAndFree()
    {
        FakeDecoder decoder;
        decoder.setHandler([](const Message& request, FakeDecoder& d) {
            switch (MessageType(request.header.type)) {
            case MessageType::GetScreens:
                return d.reply(request, 0, ScreenList { someScreens(), false });
            case MessageType::WindowDeviceGet:
                return d.reply(request, 0, WindowDevices { 7, someDevices(3), false });
            case MessageType::GetMatrix:
                return d.reply(request, 0, MatrixGeometry { 8, 4, "a long wall name" });
            default:
                return d.answerPlainly(request); // an empty window list
            }
        });
        SdkClient client;
        QCOMPARE(client.connectTo(decoder), CMATRIX_OK);
        const CMHANDLE h = client.handle();

        ScreenInfo_t* screens = nullptr;
        QCOMPARE(CMatrix_GetScreens(h, &screens), 2);
        QVERIFY(screens);
        QCOMPARE(std::memcmp(screens, someScreens().data(), 2 * sizeof(ScreenInfo_t)), 0);
        DeviceInfo_t* devices = nullptr;
        QCOMPARE(CMatrix_WindowDeviceGet(h, 7, &devices), 3);
        QCOMPARE(devices[2].channel, 102);
        QCOMPARE(QByteArray(devices[2].mainUrl), QByteArray("rtsp://127.0.0.3/main"));
        MatrixWindowStatus_t* windows = reinterpret_cast<MatrixWindowStatus_t*>(&decoder);
        QCOMPARE(CMatrix_WindowGet(h, &windows), 0);
        QVERIFY(windows == nullptr); // nothing to free

        int cols = 0, rows = 0;
        char name[7] = "xxxxxx";
        QCOMPARE(CMatrix_GetMatrix(h, &cols, &rows, name, sizeof name), CMATRIX_OK);
        QCOMPARE(cols, 8);
        QCOMPARE(rows, 4);
        QCOMPARE(QByteArray(name), QByteArray("a long"));

        SdkClient other;
        QCOMPARE(CMatrix_Free(other.handle(), screens), CMATRIX_ERR_INVALID_PARAM); // not its list
        QCOMPARE(CMatrix_Free(h, screens), CMATRIX_OK);
        QCOMPARE(CMatrix_Free(h, screens), CMATRIX_ERR_INVALID_PARAM); // twice
        QCOMPARE(CMatrix_Free(h, &cols), CMATRIX_ERR_INVALID_PARAM); // never handed out
        QCOMPARE(CMatrix_Free(h, nullptr), CMATRIX_OK);
        // `devices` is left to CMatrix_Destroy, which must release it (the leak checker watches).
    }

    void oddAnswers_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<int>("status");
        QTest::addColumn<std::vector<uint8_t>>("payload");
        QTest::addColumn<int>("answerType"); // 0: the right one
        const int matrix = int(MessageType::GetMatrix);
        const auto good = RawUdp::body(MatrixGeometry { 2, 2, "w" });
        std::vector<uint8_t> trailing = good;
        trailing.push_back(0xff);
        QTest::newRow("answer to another request") << matrix << 0 << good << int(responseOf(MessageType::GetScreens));
        QTest::newRow("garbage after a good answer") << matrix << 0 << trailing << 0;
        QTest::newRow("positive status") << matrix << 5 << good << 0;
        QTest::newRow("count past the end")
            << int(MessageType::WindowGet) << 0 << std::vector<uint8_t> { 0xff, 0xff, 0xff, 0xff } << 0;
    }

    void oddAnswers()
    {
        QFETCH(int, type);
        QFETCH(int, status);
        QFETCH(std::vector<uint8_t>, payload);
        QFETCH(int, answerType);
        FakeDecoder decoder;
        decoder.setHandler(OneOddAnswer {
            uint16_t(type), status, payload, uint16_t(answerType > 0 ? answerType : type | kResponseFlag) });
        SdkClient client;
        QCOMPARE(client.connectTo(decoder), CMATRIX_OK);
        QCOMPARE(CMatrix_SetTimeout(client.handle(), 300), CMATRIX_OK);
        int cols = 0, rows = 0;
        MatrixWindowStatus_t* windows = nullptr;
        const auto call = [&] {
            return type == int(MessageType::GetMatrix) ? CMatrix_GetMatrix(client.handle(), &cols, &rows, nullptr, 0)
                                                       : CMatrix_WindowGet(client.handle(), &windows);
        };
        QCOMPARE(call(), CMATRIX_ERR_PROTOCOL);
        QVERIFY(windows == nullptr);
        // A bad payload spoils one call, not the connection.
        QCOMPARE(call(), CMATRIX_OK);
        QCOMPARE(client.losses(), 0);
    }

    void invalidArguments_data()
    {
        QTest::addColumn<DecoderCall>("call");
        QTest::addColumn<int>("result");
        static int cols, rows;
        static char name[8];
        static DeviceInfo_t device;
        static ScreenInfo_t screen;
        const int invalid = CMATRIX_ERR_INVALID_PARAM, tooLarge = CMATRIX_ERR_TOO_LARGE;
        const auto row = [](const char* n, int result, DecoderCall call) { QTest::newRow(n) << call << result; };
        row("GetMatrix size < 0", invalid, [](CMHANDLE h) { return CMatrix_GetMatrix(h, &cols, &rows, name, -1); });
        row("SetScreens too many", tooLarge, [](CMHANDLE h) { return CMatrix_SetScreens(h, &screen, INT_MAX, false); });
        row("DeviceAdd count < 0", invalid, [](CMHANDLE h) { return CMatrix_WindowDeviceAdd(h, 1, &device, -1, 0); });
        row("DeviceAdd too many", tooLarge,
            [](CMHANDLE h) { return CMatrix_WindowDeviceAdd(h, 1, &device, 1 << 20, 0); });
        row("timeout 0", invalid, [](CMHANDLE h) { return CMatrix_SetTimeout(h, 0); });
        row("Connect null address", invalid,
            [](CMHANDLE h) { return CMatrix_Connect(h, nullptr, 1, "admin", "secret", 1000); });
        row("Connect garbled address", invalid,
            [](CMHANDLE h) { return CMatrix_Connect(h, "127.0.0", 1, "admin", "secret", 1000); });
    }

    void invalidArguments()
    {
        QFETCH(DecoderCall, call);
        QFETCH(int, result);
        FakeDecoder decoder;
        SdkClient client;
        QCOMPARE(client.connectTo(decoder), CMATRIX_OK);
        QCOMPARE(call(client.handle()), result);
        // The connection stays up, and a later call is answered after anything the refused call
        // might have sent.
        int cols = 0, rows = 0;
        QCOMPARE(CMatrix_GetMatrix(client.handle(), &cols, &rows, nullptr, 0), CMATRIX_OK);
        QCOMPARE(decoder.requests().size(), size_t(2)); // the login and that call only
        QCOMPARE(decoder.connectionsAccepted(), 1);
    }

    void answerAfterTheReaderLeft()
    {
        // The first caller reads the socket for everyone and leaves with its answer; the
        // second caller's answer comes later and must still be read.
        FakeDecoder decoder;
        decoder.setHandler([](const Message& request, FakeDecoder& d) {
            if (request.header.type == uint16_t(MessageType::GetMatrix))
                std::this_thread::sleep_for(std::chrono::milliseconds(100));
            else if (request.header.type == uint16_t(MessageType::SetTime))
                std::this_thread::sleep_for(std::chrono::milliseconds(300));
            d.answerPlainly(request);
        });
        SdkClient client;
        QCOMPARE(client.connectTo(decoder), CMATRIX_OK);
        // An answer left for a later reader would never be read: the call would time out.
        QCOMPARE(CMatrix_SetTimeout(client.handle(), 2000), CMATRIX_OK);
        auto first = std::async(std::launch::async, [&] {
            int cols = 0, rows = 0;
            return CMatrix_GetMatrix(client.handle(), &cols, &rows, nullptr, 0);
        });
        QTRY_COMPARE(decoder.requests().size(), size_t(2));
        QCOMPARE(CMatrix_SetTime(client.handle(), 2024, 1, 1, 0, 0, 0), CMATRIX_OK);
        QCOMPARE(first.get(), CMATRIX_OK);
    }

    void concurrentCallsGetTheirOwnAnswers()
    {
        FakeDecoder decoder;
        decoder.setReverseBatches(true); // answers overtake each other
        decoder.setHandler([](const Message& request, FakeDecoder& d) {
            WindowIdRequest asked;
            if (request.header.type != uint16_t(MessageType::WindowDeviceGet) || !request.decode(asked))
                return d.answerPlainly(request);
            std::vector<DeviceInfo_t> devices(static_cast<size_t>(1 + asked.windowId % 3));
            for (DeviceInfo_t& device : devices)
                device.channel = asked.windowId;
            d.reply(request, 0, WindowDevices { asked.windowId, devices, false });
        });
        SdkClient client;
        QCOMPARE(client.connectTo(decoder), CMATRIX_OK);
        const int threads = 4, callsEach = 150;
        std::vector<std::future<int>> workers;
        for (int t = 0; t < threads; ++t)
            workers.push_back(std::async(std::launch::async, [&, t] {
                int mismatches = 0;
                for (int i = 0; i < callsEach; ++i) {
                    const int windowId = t * 1000 + i;
                    DeviceInfo_t* devices = nullptr;
                    const int count = CMatrix_WindowDeviceGet(client.handle(), windowId, &devices);
                    if (count != 1 + windowId % 3
                        || devices[count - 1].channel != windowId) // no read unless the count fits
                        ++mismatches;
                    CMatrix_Free(client.handle(), devices);
                }
                return mismatches;
            }));
        for (auto& worker : workers)
            QCOMPARE(worker.get(), 0);
        QCOMPARE(client.losses(), 0);
    }
};

KVMS_TEST_CLASS(TestCalls)

#include "TestCalls.moc"
