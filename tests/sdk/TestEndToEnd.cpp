// The SDK against the virtual decoder: what a caller sees, and what the decoder ends up with.

#include "DecoderFixture.h"
#include "SdkClient.h"
#include "SdkTests.h"
#include "TestTimeout.h"
#include "WireBuilders.h"

#include <QElapsedTimer>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

#include <cstring>
#include <functional>
#include <future>
#include <vector>

using namespace cmatrix::wire;
using kvmstest::scaled;
using kvmstest::window;

using FaultSetup = std::function<void(vdec::VirtualDecoder&)>;
Q_DECLARE_METATYPE(FaultSetup)

namespace {

QJsonObject loginError(CMHANDLE handle)
{
    char buffer[256] = {};
    if (CMatrix_GetLoginErrMsg(handle, buffer, sizeof buffer) != CMATRIX_OK)
        return {};
    return QJsonDocument::fromJson(buffer).object();
}

int loginTo(SdkClient& client, const vdec::VirtualDecoder* d, const char* password = "admin123")
{
    return CMatrix_Connect(
        client.handle(), d->address().toLatin1().constData(), d->port(), "admin", password, scaled(3000));
}

DeviceInfo_t source(int subWindow, const char* devId)
{
    DeviceInfo_t d {};
    d.subWindow = subWindow;
    std::strncpy(d.devId, devId, sizeof d.devId - 1);
    std::strncpy(d.name, devId, sizeof d.name - 1);
    d.channel = 1;
    return d;
}

} // namespace

class TestEndToEnd : public QObject {
    Q_OBJECT

    kvmstest::DecoderFixture fixture_;

    vdec::VirtualDecoder* startDecoder(int n, const kvmstest::DecoderFixture::Tweak& tweak = {})
    {
        vdec::VirtualDecoder* d = fixture_.startDecoder(n, tweak);
        if (!d)
            qWarning("virtual decoder %d did not start", n);
        return d;
    }

private slots:
    void cleanup() { fixture_.cleanup(); }

    void loginRefusals()
    {
        vdec::VirtualDecoder* d = startDecoder(41, [](vdec::DecoderConfig& c) {
            c.maxFailedLogins = 2;
            c.lockSeconds = 60;
        });
        QVERIFY(d);
        SdkClient client;
        QCOMPARE(loginTo(client, d, "wrong"), CMATRIX_ERR_PASSWORD);
        QJsonObject error = loginError(client.handle());
        QCOMPARE(error.value("ERRCODE").toString(), QString("PASSWDERR"));
        QCOMPARE(error.value("PARAM").toObject().value("ERRNUM").toInt(), 1);
        QCOMPARE(error.value("PARAM").toObject().value("SUMNUM").toInt(), 2);
        QCOMPARE(error.value("PARAM").toObject().value("LOCKTIME").toInt(), 60);
        QCOMPARE(loginTo(client, d, "wrong"), CMATRIX_ERR_PASSWORD);
        QCOMPARE(loginError(client.handle()).value("PARAM").toObject().value("ERRNUM").toInt(), 2);

        QCOMPARE(loginTo(client, d), CMATRIX_ERR_USER_LOCKED); // even with the right password
        error = loginError(client.handle());
        QCOMPARE(error.value("ERRCODE").toString(), QString("USERLOCK"));
        const int unlock = error.value("PARAM").toObject().value("UNLOCKTIME").toInt();
        QVERIFY(unlock > 0 && unlock <= 60);

        vdec::VirtualDecoder* fresh = startDecoder(42, [](vdec::DecoderConfig& c) { c.factoryNew = true; });
        QVERIFY(fresh);
        QCOMPARE(loginTo(client, fresh), CMATRIX_ERR_NOT_ACTIVATED);
        QCOMPARE(loginError(client.handle()).value("ERRCODE").toString(), QString("DEVNOACTIVE"));
        QCOMPARE(client.losses(), 0);
    }

    void wallAndWindows()
    {
        vdec::VirtualDecoder* d = startDecoder(43);
        QVERIFY(d);
        SdkClient client;
        const CMHANDLE h = client.handle();
        QCOMPARE(loginTo(client, d), CMATRIX_OK);
        QCOMPARE(CMatrix_SetTime(h, 2024, 2, 29, 13, 14, 15), CMATRIX_OK);
        QCOMPARE(d->snapshot().lastSetTime, QDateTime(QDate(2024, 2, 29), QTime(13, 14, 15)));

        QCOMPARE(CMatrix_SetMatrix(h, 4, 3, "Lobby"), CMATRIX_OK);
        int cols = 0, rows = 0;
        char name[64];
        QCOMPARE(CMatrix_GetMatrix(h, &cols, &rows, name, sizeof name), CMATRIX_OK);
        QCOMPARE(cols, 4);
        QCOMPARE(rows, 3);
        QCOMPARE(QByteArray(name), QByteArray("Lobby"));
        QCOMPARE(CMatrix_SetStatus(h, 2, "127.0.0.44"), CMATRIX_OK);
        QCOMPARE(d->snapshot().masterIp, QString("127.0.0.44"));
        ScreenInfo_t screens[2] = {};
        for (int i = 0; i < 2; ++i) {
            std::strcpy(screens[i].name, "VD00000043");
            std::strcpy(screens[i].ip, "127.0.0.43");
            screens[i].port = d->port();
            screens[i].outputIndex = i;
            screens[i].position = i + 1;
        }
        QCOMPARE(CMatrix_SetScreens(h, screens, 2, true), CMATRIX_OK);
        ScreenInfo_t* stored = nullptr;
        QCOMPARE(CMatrix_GetScreens(h, &stored), 2);
        QCOMPARE(stored[1].outputIndex, 1);
        QCOMPARE(QByteArray(stored[1].ip), QByteArray("127.0.0.43"));
        QCOMPARE(CMatrix_Free(h, stored), CMATRIX_OK);

        const MatrixWindow_t windows[] = { window(1, 0, 0, 16384, 16384), window(2, 1000, 1000, 4000, 3000, true) };
        QCOMPARE(CMatrix_WindowAdd(h, windows, 2, false), CMATRIX_OK);
        const MatrixWindow_t moved = window(2, 2000, 2500, 5000, 5000, true);
        QCOMPARE(CMatrix_WindowMove(h, &moved), CMATRIX_OK);
        MatrixWindowStatus_t* listed = nullptr;
        QCOMPARE(CMatrix_WindowGet(h, &listed), 2);
        QCOMPARE(listed[0].window.id, 1u);
        QCOMPARE(listed[1].window.x, 2000);
        QCOMPARE(listed[1].window.h, 5000);
        QVERIFY(listed[1].layer > 0); // floating windows stack
        QCOMPARE(CMatrix_Free(h, listed), CMATRIX_OK);

        QCOMPARE(CMatrix_WindowSetDivision(h, 1, 4), CMATRIX_OK);
        WindowDivision_t* divisions = nullptr;
        QCOMPARE(CMatrix_WindowGetDivision(h, &divisions), 2);
        QCOMPARE(divisions[0].windowId, 1);
        QCOMPARE(divisions[0].division, 4);
        QCOMPARE(CMatrix_Free(h, divisions), CMATRIX_OK);

        const DeviceInfo_t sources[] = { source(1, "cam-1"), source(3, "cam-3") };
        QCOMPARE(CMatrix_WindowDeviceAdd(h, 1, sources, 2, false), CMATRIX_OK);
        QCOMPARE(CMatrix_WindowDeviceDel(h, 1, &sources[0], 1), CMATRIX_OK);
        DeviceInfo_t* bound = nullptr;
        QCOMPARE(CMatrix_WindowDeviceGet(h, 1, &bound), 1);
        QCOMPARE(std::memcmp(&bound[0], &sources[1], sizeof(DeviceInfo_t)), 0); // byte for byte
        QCOMPARE(CMatrix_Free(h, bound), CMATRIX_OK);
        QCOMPARE(CMatrix_WindowDeviceAdd(h, 1, &sources[0], 1, true), CMATRIX_OK); // reset: cam-3 goes
        QCOMPARE(d->snapshot().window(1)->sources.size(), size_t(1));
        QCOMPARE(QByteArray(d->snapshot().window(1)->sources.at(1).devId), QByteArray("cam-1"));

        QCOMPARE(CMatrix_WindowSetFullScreen(h, 1, 3, 1), CMATRIX_OK);
        QCOMPARE(d->snapshot().window(1)->fullScreenSub, 3);
        const uint32_t doomed[] = { 2 };
        QCOMPARE(CMatrix_WindowDel(h, doomed, 1), CMATRIX_OK);
        QCOMPARE(d->snapshot().windows.size(), size_t(1));
        const MatrixWindow_t only = window(5, 0, 0, 32768, 32768);
        QCOMPARE(CMatrix_WindowAdd(h, &only, 1, true), CMATRIX_OK); // replace: window 1 goes
        QCOMPARE(d->snapshot().windows.size(), size_t(1));
        QVERIFY(d->snapshot().window(5));
        QCOMPARE(client.losses(), 0);
    }

    void lockExpires()
    {
        vdec::VirtualDecoder* d = startDecoder(49, [](vdec::DecoderConfig& c) {
            c.maxFailedLogins = 1;
            c.lockSeconds = 1;
        });
        QVERIFY(d);
        SdkClient client;
        QCOMPARE(loginTo(client, d, "wrong"), CMATRIX_ERR_PASSWORD);
        QCOMPARE(loginTo(client, d), CMATRIX_ERR_USER_LOCKED);
        QTRY_COMPARE_WITH_TIMEOUT(loginTo(client, d), CMATRIX_OK, scaled(4000));
    }

    void restartKeepsTheWall()
    {
        vdec::VirtualDecoder* d = startDecoder(50);
        QVERIFY(d);
        SdkClient client;
        QCOMPARE(loginTo(client, d), CMATRIX_OK);
        QCOMPARE(CMatrix_SetMatrix(client.handle(), 3, 2, "Kept"), CMATRIX_OK);
        const MatrixWindow_t windows[] = { window(1, 0, 0, 21844, 16384), window(7, 100, 200, 3000, 4000, true) };
        QCOMPARE(CMatrix_WindowAdd(client.handle(), windows, 2, true), CMATRIX_OK);
        QCOMPARE(CMatrix_WindowSetDivision(client.handle(), 1, 9), CMATRIX_OK);
        const DeviceInfo_t bound = source(9, "cam-9");
        QCOMPARE(CMatrix_WindowDeviceAdd(client.handle(), 1, &bound, 1, true), CMATRIX_OK);

        QVERIFY(d->restart());
        QTRY_COMPARE_WITH_TIMEOUT(client.losses(), 1, scaled(5000)); // the restart cut the session
        QCOMPARE(loginTo(client, d), CMATRIX_OK);
        int cols = 0, rows = 0;
        QCOMPARE(CMatrix_GetMatrix(client.handle(), &cols, &rows, nullptr, 0), CMATRIX_OK);
        QCOMPARE(cols * 10 + rows, 32);
        MatrixWindowStatus_t* listed = nullptr;
        QCOMPARE(CMatrix_WindowGet(client.handle(), &listed), 2);
        QCOMPARE(std::memcmp(&listed[0].window, &windows[0], sizeof(MatrixWindow_t)), 0);
        QCOMPARE(std::memcmp(&listed[1].window, &windows[1], sizeof(MatrixWindow_t)), 0);
        QCOMPARE(CMatrix_Free(client.handle(), listed), CMATRIX_OK);
        DeviceInfo_t* sources = nullptr;
        QCOMPARE(CMatrix_WindowDeviceGet(client.handle(), 1, &sources), 1);
        QCOMPARE(std::memcmp(&sources[0], &bound, sizeof(DeviceInfo_t)), 0);
        QCOMPARE(CMatrix_Free(client.handle(), sources), CMATRIX_OK);
    }

    void decoderFaults_data()
    {
        QTest::addColumn<FaultSetup>("fault");
        QTest::addColumn<int>("result");
        QTest::addColumn<int>("losses");
        using G = vdec::Garbage;
        const auto garble = [](G kind) {
            return FaultSetup(
                [kind](vdec::VirtualDecoder& d) { d.faults().garbleNextAnswer(kind, MessageType::GetMatrix); });
        };
        QTest::newRow("busy") << FaultSetup([](vdec::VirtualDecoder& d) {
            d.faults().failNext(MessageType::GetMatrix, CMATRIX_ERR_BUSY);
        }) << CMATRIX_ERR_BUSY << 0;
        QTest::newRow("never answers") << FaultSetup([](vdec::VirtualDecoder& d) {
            d.faults().neverAnswer(MessageType::GetMatrix);
        }) << CMATRIX_ERR_TIMEOUT << 0;
        QTest::newRow("answers late") << FaultSetup([](vdec::VirtualDecoder& d) {
            d.faults().answerLate(MessageType::GetMatrix, 1500);
        }) << CMATRIX_ERR_TIMEOUT << 0;
        QTest::newRow("drops the connection")
            << FaultSetup([](vdec::VirtualDecoder& d) { d.faults().dropConnectionAfter(0); })
            << CMATRIX_ERR_DISCONNECTED << 1;
        QTest::newRow("mutes heartbeats") << FaultSetup([](vdec::VirtualDecoder& d) {
            d.faults().muteHeartbeats(true);
            d.faults().neverAnswer(MessageType::GetMatrix);
        }) << CMATRIX_ERR_DISCONNECTED << 1;
        QTest::newRow("bad magic") << garble(G::BadMagic) << CMATRIX_ERR_DISCONNECTED << 1;
        QTest::newRow("bad version") << garble(G::BadVersion) << CMATRIX_ERR_DISCONNECTED << 1;
        QTest::newRow("oversized") << garble(G::Oversized) << CMATRIX_ERR_DISCONNECTED << 1;
        QTest::newRow("malformed payload") << garble(G::MalformedPayload) << CMATRIX_ERR_PROTOCOL << 0;
        QTest::newRow("wrong request id") << garble(G::WrongRequestId) << CMATRIX_ERR_TIMEOUT << 0;
    }

    void decoderFaults()
    {
        QFETCH(FaultSetup, fault);
        QFETCH(int, result);
        QFETCH(int, losses);
        vdec::VirtualDecoder* d = startDecoder(45, [](vdec::DecoderConfig& c) { c.heartbeatIntervalMs = 100; });
        QVERIFY(d);
        SdkClient client;
        client.setHeartbeat(100, 600);
        QCOMPARE(loginTo(client, d), CMATRIX_OK);
        // Longer than the silence limit, so a muted decoder is caught while the call waits.
        QCOMPARE(CMatrix_SetTimeout(client.handle(), 1000), CMATRIX_OK);
        fault(*d);
        int cols = 0, rows = 0;
        QCOMPARE(CMatrix_GetMatrix(client.handle(), &cols, &rows, nullptr, 0), result);
        QTRY_COMPARE_WITH_TIMEOUT(client.losses(), losses, scaled(5000));
        d->faults().clear();
        QTest::qWait(300);
        QCOMPARE(client.losses(), losses); // once, never twice
        // A fault that left the connection up spoiled one call only.
        const int next = CMatrix_GetMatrix(client.handle(), &cols, &rows, nullptr, 0);
        QCOMPARE(next, losses ? CMATRIX_ERR_DISCONNECTED : CMATRIX_OK);
    }

    void heartbeatsBothWays()
    {
        vdec::VirtualDecoder* d = startDecoder(46, [](vdec::DecoderConfig& c) {
            c.heartbeatIntervalMs = 100;
            c.heartbeatTimeoutMs = 600;
        });
        QVERIFY(d);
        SdkClient client;
        client.setHeartbeat(100, 600);
        QCOMPARE(loginTo(client, d), CMATRIX_OK);
        QTest::qWait(1500); // both would have given up by now without the other's beats
        QVERIFY(d->journal().count(MessageType::Heartbeat) >= 6);
        QCOMPARE(d->connectionCount(), 1);
        QCOMPARE(client.losses(), 0);
        d->killConnections();
        QTRY_COMPARE_WITH_TIMEOUT(client.losses(), 1, scaled(5000));
    }

    void twoDecodersTwoHandles()
    {
        vdec::VirtualDecoder* first = startDecoder(47);
        vdec::VirtualDecoder* second = startDecoder(48);
        QVERIFY(first && second);
        SdkClient a, b;
        QCOMPARE(loginTo(a, first), CMATRIX_OK);
        QCOMPARE(loginTo(b, second), CMATRIX_OK);
        auto setA = std::async(std::launch::async, [&] { return CMatrix_SetMatrix(a.handle(), 3, 3, "A"); });
        auto setB = std::async(std::launch::async, [&] { return CMatrix_SetMatrix(b.handle(), 5, 2, "B"); });
        QCOMPARE(setA.get(), CMATRIX_OK);
        QCOMPARE(setB.get(), CMATRIX_OK);
        QCOMPARE(first->snapshot().name, QString("A"));
        QCOMPARE(second->snapshot().cols, 5);
        QCOMPARE(a.destroy(), CMATRIX_OK);
        int cols = 0, rows = 0;
        QCOMPARE(CMatrix_GetMatrix(b.handle(), &cols, &rows, nullptr, 0), CMATRIX_OK); // untouched by the other
        QCOMPARE(cols, 5);
    }
};

QObject* createEndToEndTests()
{
    return new TestEndToEnd;
}

#include "TestEndToEnd.moc"
