// Maintenance calls through the real SDK against in-process decoders on 127.0.0.114
// and up: firmware, factory reset, resolution, passwords, configuration files, logs.

#include "DecoderFixture.h"
#include "TestMain.h"
#include "TestTimeout.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QtTest>

#include <atomic>
#include <cstring>
#include <mutex>
#include <vector>

using kvmstest::scaled;

Q_DECLARE_METATYPE(ScreenResolution_t)

namespace {

// One SDK handle, logged in to a decoder, counting the losses its status callback reports.
class Client {
public:
    Client()
        : handle_(CMatrix_Create())
    {
        CMatrix_RegisterCallback(handle_, &Client::status, this);
    }
    ~Client() { CMatrix_Destroy(handle_); }
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;

    CMHANDLE handle() const { return handle_; }
    int connect(const vdec::VirtualDecoder* d, const char* password = "admin123", const char* user = "admin")
    {
        return CMatrix_Connect(handle_, d->address().toLatin1().constData(), d->port(), user, password, scaled(3000));
    }
    int losses() const { return losses_; }

private:
    static void status(CMHANDLE, int event, void* user)
    {
        if (event == CMATRIX_EVENT_DISCONNECTED)
            ++static_cast<Client*>(user)->losses_;
    }
    const CMHANDLE handle_;
    std::atomic<int> losses_ { 0 };
};

// Firmware progress as the update callback reports it, on an SDK thread.
class Progress {
public:
    static void callback(const UpdateStatus_t* status, void* user)
    {
        auto* self = static_cast<Progress*>(user);
        std::lock_guard<std::mutex> lock(self->mutex_);
        self->reports_.push_back(*status);
    }
    std::vector<UpdateStatus_t> reports() const
    {
        std::lock_guard<std::mutex> lock(mutex_);
        return reports_;
    }
    bool ended() const
    {
        const std::vector<UpdateStatus_t> r = reports();
        return !r.empty() && r.back().state != UPDATE_STATE_UPGRADING;
    }

private:
    mutable std::mutex mutex_;
    std::vector<UpdateStatus_t> reports_;
};

// The firmware version a decoder reports to discovery.
class VersionProbe {
public:
    static QByteArray of(const vdec::VirtualDecoder* d)
    {
        const QByteArray target = QStringLiteral("%1:%2").arg(d->address()).arg(d->udpPort()).toLatin1();
        if (Discovery_SetTargets(target.constData()) != CMATRIX_OK)
            return {};
        VersionProbe probe;
        if (Discovery_Start(10, 1, &VersionProbe::callback, &probe) != CMATRIX_OK
            || !QTest::qWaitFor([&] { return probe.done_.load(); }, scaled(3000)))
            return {};
        std::lock_guard<std::mutex> lock(probe.mutex_);
        return probe.version_;
    }

private:
    static void callback(bool finished, const DeviceInfo_t* device, void* user)
    {
        auto* self = static_cast<VersionProbe*>(user);
        std::lock_guard<std::mutex> lock(self->mutex_);
        if (device)
            self->version_ = QByteArray(device->name);
        if (finished)
            self->done_ = true;
    }
    std::mutex mutex_;
    QByteArray version_;
    std::atomic<bool> done_ { false };
};

QByteArray image(const QByteArray& version, const QByteArray& payload = QByteArray(4096, 'p'))
{
    return QByteArray("KVFWIMG1") + version + QByteArray(1, '\0') + payload;
}

ScreenResolution_t mode(int width, int height, int rate, int output)
{
    return ScreenResolution_t { width, height, rate, output };
}

} // namespace

class TestMaintenance : public QObject {
    Q_OBJECT

    kvmstest::DecoderFixture fixture_;
    QTemporaryDir files_;

    QByteArray write(const QString& name, const QByteArray& content)
    {
        const QString path = files_.filePath(name);
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            return {};
        return path.toLocal8Bit();
    }

    static QByteArray read(const QByteArray& path)
    {
        QFile file(QString::fromLocal8Bit(path));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    static std::vector<LogInfo_t> readLogs(
        CMHANDLE h, int type = LOG_TYPE_ALL, uint32_t begin = 0, uint32_t end = UINT32_MAX)
    {
        LogInfo_t* list = nullptr;
        const int count = CMatrix_GetLog(h, type, begin, end, &list);
        std::vector<LogInfo_t> out(list, list + std::max(count, 0));
        CMatrix_FreeLog(h, list);
        return out;
    }

    static bool logged(const std::vector<LogInfo_t>& entries, const char* content)
    {
        return std::any_of(entries.begin(), entries.end(),
            [content](const LogInfo_t& e) { return QByteArray(e.content).startsWith(content); });
    }

private slots:
    void cleanup()
    {
        fixture_.cleanup();
        Discovery_SetTargets(nullptr);
    }

    void firmwareUpdateReportsProgress()
    {
        vdec::VirtualDecoder* d = fixture_.startDecoder(114, [](vdec::DecoderConfig& c) { c.firmwareStepMs = 5; });
        QVERIFY(d);
        Client client;
        QCOMPARE(client.connect(d), CMATRIX_OK);
        const QByteArray path = write("fw.bin", image("V2.0.0 build 250101"));
        Progress progress;
        QCOMPARE(CMatrix_FirmwareUpdate(client.handle(), path, &Progress::callback, &progress), CMATRIX_OK);
        QTRY_VERIFY_WITH_TIMEOUT(progress.ended(), scaled(5000));

        const std::vector<UpdateStatus_t> reports = progress.reports();
        QCOMPARE(int(reports.size()), 12); // 0, 10, ..., 100, then finished
        for (int i = 0; i < 11; ++i) {
            QCOMPARE(reports[i].state, UPDATE_STATE_UPGRADING);
            QCOMPARE(reports[i].progress, i * 10);
        }
        QCOMPARE(reports.back().state, UPDATE_STATE_FINISHED);
        QCOMPARE(reports.back().progress, 100);
        QCOMPARE(reports.back().result, CMATRIX_OK);
        QCOMPARE(QByteArray(reports.back().version), QByteArray("V2.0.0 build 250101"));

        QCOMPARE(d->snapshot().firmwareVersion, QString("V2.0.0 build 250101"));
        QVERIFY(!d->snapshot().upgrading);
        QCOMPARE(VersionProbe::of(d), QByteArray("V2.0.0 build 250101"));
        QVERIFY(logged(readLogs(client.handle(), LOG_TYPE_SYSTEM), "Firmware upgraded to V2.0.0"));
        QVERIFY(d->restart());
        QCOMPARE(d->snapshot().firmwareVersion, QString("V2.0.0 build 250101")); // kept
        QTRY_COMPARE_WITH_TIMEOUT(client.losses(), 1, scaled(5000)); // the restart
    }

    void badFirmwareIsRefused_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<int>("result");
        QTest::newRow("wrong magic") << QByteArray("KVFWIMG2V2\0payload", 18) << CMATRIX_ERR_FIRMWARE;
        QTest::newRow("magic only") << QByteArray("KVFWIMG1") << CMATRIX_ERR_FIRMWARE;
        QTest::newRow("empty file") << QByteArray() << CMATRIX_ERR_FIRMWARE;
        QTest::newRow("empty version") << image("") << CMATRIX_ERR_FIRMWARE;
        QTest::newRow("version without terminator")
            << QByteArray("KVFWIMG1") + QByteArray(40, 'v') << CMATRIX_ERR_FIRMWARE;
        QTest::newRow("version of 32 characters") << image(QByteArray(32, 'v')) << CMATRIX_ERR_FIRMWARE;
        QTest::newRow("control character in version") << image("V2\x01") << CMATRIX_ERR_FIRMWARE;
        QTest::newRow("version of 31 characters") << image(QByteArray(31, 'v')) << CMATRIX_OK;
        QTest::newRow("nothing after the version") << image("V3", QByteArray()) << CMATRIX_OK;
    }

    void badFirmwareIsRefused()
    {
        QFETCH(QByteArray, content);
        QFETCH(int, result);
        vdec::VirtualDecoder* d = fixture_.startDecoder(115, [](vdec::DecoderConfig& c) { c.firmwareStepMs = 1; });
        QVERIFY(d);
        Client client;
        QCOMPARE(client.connect(d), CMATRIX_OK);
        Progress progress;
        QCOMPARE(
            CMatrix_FirmwareUpdate(client.handle(), write("fw.bin", content), &Progress::callback, &progress), result);
        if (result == CMATRIX_OK) {
            QTRY_VERIFY_WITH_TIMEOUT(progress.ended(), scaled(5000));
            return;
        }
        QTest::qWait(50);
        QVERIFY(progress.reports().empty());
        QCOMPARE(d->snapshot().firmwareVersion, d->config().firmwareVersion);
    }

    void firmwareFileProblems()
    {
        vdec::VirtualDecoder* d = fixture_.startDecoder(116);
        QVERIFY(d);
        Client client;
        QCOMPARE(client.connect(d), CMATRIX_OK);
        const QByteArray missing = files_.filePath("missing.bin").toLocal8Bit();
        QCOMPARE(CMatrix_FirmwareUpdate(client.handle(), missing, nullptr, nullptr), CMATRIX_ERR_FILE_NOT_FOUND);
        QCOMPARE(CMatrix_FirmwareUpdate(client.handle(), files_.path().toLocal8Bit(), nullptr, nullptr),
            CMATRIX_ERR_FILE_IO); // a directory
        QCOMPARE(CMatrix_FirmwareUpdate(client.handle(), nullptr, nullptr, nullptr), CMATRIX_ERR_INVALID_PARAM);
        QCOMPARE(d->journal().count(cmatrix::wire::MessageType::FirmwareUpload), 0);
    }

    void secondJobWhileUpgradingIsBusy()
    {
        vdec::VirtualDecoder* d = fixture_.startDecoder(117, [](vdec::DecoderConfig& c) { c.firmwareStepMs = 500; });
        QVERIFY(d);
        Client client;
        QCOMPARE(client.connect(d), CMATRIX_OK);
        const QByteArray path = write("fw.bin", image("V2.1"));
        QCOMPARE(CMatrix_FirmwareUpdate(client.handle(), path, nullptr, nullptr), CMATRIX_OK);
        QVERIFY(d->snapshot().upgrading);
        QCOMPARE(CMatrix_FirmwareUpdate(client.handle(), path, nullptr, nullptr), CMATRIX_ERR_BUSY);
        QCOMPARE(CMatrix_FactoryReset(client.handle()), CMATRIX_ERR_BUSY);
        QVERIFY(d->snapshot().activated);
        // Stopping the decoder abandons the upgrade: the old version stays.
        d->stop();
        QCOMPARE(d->snapshot().firmwareVersion, d->config().firmwareVersion);
    }

    void factoryResetRestartsTheUnitFresh()
    {
        vdec::VirtualDecoder* d = fixture_.startDecoder(118);
        QVERIFY(d);
        Client client;
        Client other;
        QCOMPARE(client.connect(d), CMATRIX_OK);
        QCOMPARE(other.connect(d), CMATRIX_OK);
        const CMHANDLE h = client.handle();
        QCOMPARE(CMatrix_SetMatrix(h, 3, 3, "Lobby"), CMATRIX_OK);
        const MatrixWindow_t window { 1, 0, {}, 0, 0, 10922, 10922 };
        QCOMPARE(CMatrix_WindowAdd(h, &window, 1, false), CMATRIX_OK);
        const ScreenResolution_t uhd = mode(3840, 2160, 30, -1);
        QCOMPARE(CMatrix_SetResolution(h, &uhd, 1), CMATRIX_OK);
        QCOMPARE(CMatrix_AccountPasswdModify(h, "admin", "admin123", "Changed2024"), CMATRIX_OK);

        QCOMPARE(CMatrix_FactoryReset(h), CMATRIX_OK);
        QTRY_COMPARE_WITH_TIMEOUT(client.losses(), 1, scaled(5000)); // every connection closes, as on a reboot
        QTRY_COMPARE_WITH_TIMEOUT(other.losses(), 1, scaled(5000));
        const vdec::DecoderSnapshot s = d->snapshot();
        QCOMPARE(s.cols, 2);
        QCOMPARE(s.rows, 2);
        QVERIFY(s.windows.empty());
        QVERIFY(!s.activated);
        QCOMPARE(s.resolution.width, 1920);
        QCOMPARE(s.firmwareVersion, d->config().firmwareVersion); // firmware is not undone

        QCOMPARE(client.connect(d, "Changed2024"), CMATRIX_ERR_NOT_ACTIVATED);
        QVERIFY(d->restart());
        QVERIFY(!d->snapshot().activated); // kept over a power cycle
        QCOMPARE(d->snapshot().cols, 2);
    }

    void resolution_data()
    {
        QTest::addColumn<ScreenResolution_t>("set");
        QTest::addColumn<int>("setAll");
        QTest::addColumn<int>("result");
        QTest::addColumn<int>("askOutput");
        QTest::addColumn<int>("width");
        QTest::newRow("all outputs to 4K") << mode(3840, 2160, 30, 0) << 1 << CMATRIX_OK << -1 << 3840;
        QTest::newRow("all outputs, one asked") << mode(1280, 720, 60, 0) << 1 << CMATRIX_OK << 3 << 1280;
        QTest::newRow("one output") << mode(1280, 720, 50, 2) << 0 << CMATRIX_OK << 2 << 1280;
        QTest::newRow("one output, another asked") << mode(1280, 720, 50, 2) << 0 << CMATRIX_OK << 1 << 1920;
        QTest::newRow("one output, all asked") << mode(1280, 720, 50, 2) << 0 << CMATRIX_OK << -1 << 1920;
        QTest::newRow("mode not offered") << mode(1920, 1080, 59, 0) << 1 << CMATRIX_ERR_INVALID_PARAM << -1 << 1920;
        QTest::newRow("zero size") << mode(0, 0, 0, 0) << 1 << CMATRIX_ERR_INVALID_PARAM << -1 << 1920;
        QTest::newRow("output past the screens")
            << mode(1280, 720, 60, 4) << 0 << CMATRIX_ERR_INVALID_PARAM << 0 << 1920;
        QTest::newRow("negative output") << mode(1280, 720, 60, -1) << 0 << CMATRIX_ERR_INVALID_PARAM << 0 << 1920;
    }

    void resolution()
    {
        QFETCH(ScreenResolution_t, set);
        QFETCH(int, setAll);
        QFETCH(int, result);
        QFETCH(int, askOutput);
        QFETCH(int, width);
        vdec::VirtualDecoder* d = fixture_.startDecoder(119); // a 2 x 2 wall: outputs 0..3
        QVERIFY(d);
        Client client;
        QCOMPARE(client.connect(d), CMATRIX_OK);
        QCOMPARE(CMatrix_SetResolution(client.handle(), &set, setAll), result);
        ScreenResolution_t got = mode(0, 0, 0, askOutput);
        QCOMPARE(CMatrix_GetResolution(client.handle(), &got), CMATRIX_OK);
        QCOMPARE(got.width, width);
        QCOMPARE(got.outputIndex, askOutput);
        got.outputIndex = 4;
        QCOMPARE(CMatrix_GetResolution(client.handle(), &got), CMATRIX_ERR_INVALID_PARAM);
    }

    void passwordChange_data()
    {
        QTest::addColumn<QByteArray>("user");
        QTest::addColumn<QByteArray>("oldPassword");
        QTest::addColumn<QByteArray>("newPassword");
        QTest::addColumn<int>("result");
        QTest::newRow("changed") << QByteArray("admin") << QByteArray("admin123") << QByteArray("Better2024")
                                 << CMATRIX_OK;
        QTest::newRow("wrong old password")
            << QByteArray("admin") << QByteArray("admin124") << QByteArray("Better2024") << CMATRIX_ERR_PASSWORD;
        QTest::newRow("unknown user") << QByteArray("guest") << QByteArray("admin123") << QByteArray("Better2024")
                                      << CMATRIX_ERR_PASSWORD;
        QTest::newRow("too short") << QByteArray("admin") << QByteArray("admin123") << QByteArray("Ab1")
                                   << CMATRIX_ERR_WEAK_PASSWORD;
        QTest::newRow("thirty-two characters") << QByteArray("admin") << QByteArray("admin123")
                                               << QByteArray("a1").repeated(16) << CMATRIX_ERR_WEAK_PASSWORD;
        QTest::newRow("thirty-one characters")
            << QByteArray("admin") << QByteArray("admin123") << QByteArray("a1").repeated(16).left(31) << CMATRIX_OK;
        QTest::newRow("no digit") << QByteArray("admin") << QByteArray("admin123") << QByteArray("BetterOnes")
                                  << CMATRIX_ERR_WEAK_PASSWORD;
    }

    void passwordChange()
    {
        QFETCH(QByteArray, user);
        QFETCH(QByteArray, oldPassword);
        QFETCH(QByteArray, newPassword);
        QFETCH(int, result);
        vdec::VirtualDecoder* d = fixture_.startDecoder(120);
        QVERIFY(d);
        Client client;
        QCOMPARE(client.connect(d), CMATRIX_OK);
        QCOMPARE(CMatrix_AccountPasswdModify(client.handle(), user, oldPassword, newPassword), result);
        int cols = 0, rows = 0;
        QCOMPARE(CMatrix_GetMatrix(client.handle(), &cols, &rows, nullptr, 0), CMATRIX_OK); // the session stays
        Client later;
        QCOMPARE(later.connect(d, "admin123"), result == CMATRIX_OK ? CMATRIX_ERR_PASSWORD : CMATRIX_OK);
        if (result == CMATRIX_OK)
            QCOMPARE(later.connect(d, newPassword), CMATRIX_OK);
    }

    void configurationRoundTrip()
    {
        vdec::VirtualDecoder* d = fixture_.startDecoder(121);
        QVERIFY(d);
        Client client;
        QCOMPARE(client.connect(d), CMATRIX_OK);
        const CMHANDLE h = client.handle();
        QCOMPARE(CMatrix_SetMatrix(h, 3, 2, "Lobby"), CMATRIX_OK);
        const MatrixWindow_t window { 7, 0, {}, 0, 0, 10922, 16384 };
        QCOMPARE(CMatrix_WindowAdd(h, &window, 1, false), CMATRIX_OK);
        const ScreenResolution_t hd = mode(1280, 720, 60, -1);
        QCOMPARE(CMatrix_SetResolution(h, &hd, 1), CMATRIX_OK);

        const QByteArray path = files_.filePath("exported.json").toLocal8Bit();
        QCOMPARE(CMatrix_ExportConfig(h, path), CMATRIX_OK);
        const QByteArray exported = read(path);
        const QJsonObject o = QJsonDocument::fromJson(exported).object();
        QCOMPARE(o.value("wall").toObject().value("name").toString(), QString("Lobby"));
        QVERIFY(!o.contains("accounts"));
        QVERIFY(!exported.contains("sha256"));

        QCOMPARE(CMatrix_SetMatrix(h, 4, 4, "Other"), CMATRIX_OK); // drops the window too
        const ScreenResolution_t uhd = mode(3840, 2160, 30, -1);
        QCOMPARE(CMatrix_SetResolution(h, &uhd, 1), CMATRIX_OK);
        QCOMPARE(CMatrix_ImportConfig(h, path), CMATRIX_OK);
        const vdec::DecoderSnapshot s = d->snapshot();
        QCOMPARE(s.cols, 3);
        QCOMPARE(s.name, QString("Lobby"));
        QVERIFY(s.window(7));
        QCOMPARE(s.resolution.width, 1280);
        Client again;
        QCOMPARE(again.connect(d), CMATRIX_OK); // accounts are not part of it
    }

    void malformedImportChangesNothing_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<int>("result");
        QTest::newRow("not JSON") << QByteArray("{\"format\":") << CMATRIX_ERR_CONFIG;
        QTest::newRow("empty file") << QByteArray() << CMATRIX_ERR_CONFIG;
        QTest::newRow("an array") << QByteArray("[1,2]") << CMATRIX_ERR_CONFIG;
        QTest::newRow("another format") << QByteArray(R"({"format":99,"wall":{"cols":2,"rows":2,"name":"W"}})")
                                        << CMATRIX_ERR_CONFIG;
        QTest::newRow("no format") << QByteArray(R"({"wall":{"cols":2,"rows":2,"name":"W"}})") << CMATRIX_ERR_CONFIG;
        QTest::newRow("wall too large") << QByteArray(R"({"format":1,"wall":{"cols":99,"rows":2,"name":"W"}})")
                                        << CMATRIX_ERR_CONFIG;
        QTest::newRow("resolution not offered")
            << QByteArray(R"({"format":1,"wall":{"cols":2,"rows":2,"name":"W"},)"
                          R"("resolution":{"all":{"width":1,"height":1,"refreshRate":1}}})")
            << CMATRIX_ERR_CONFIG;
    }

    void malformedImportChangesNothing()
    {
        QFETCH(QByteArray, content);
        QFETCH(int, result);
        vdec::VirtualDecoder* d = fixture_.startDecoder(122);
        QVERIFY(d);
        Client client;
        QCOMPARE(client.connect(d), CMATRIX_OK);
        QCOMPARE(CMatrix_SetMatrix(client.handle(), 3, 3, "Kept"), CMATRIX_OK);
        const QByteArray before = read(d->stateFilePath().toLocal8Bit());
        QCOMPARE(CMatrix_ImportConfig(client.handle(), write("import.json", content)), result);
        QCOMPARE(d->snapshot().name, QString("Kept"));
        QCOMPARE(d->snapshot().cols, 3);
        QCOMPARE(read(d->stateFilePath().toLocal8Bit()), before);
    }

    void logs()
    {
        vdec::VirtualDecoder* d = fixture_.startDecoder(123);
        QVERIFY(d);
        Client client;
        QCOMPARE(client.connect(d), CMATRIX_OK);
        const CMHANDLE h = client.handle();
        const uint32_t before = uint32_t(QDateTime::currentSecsSinceEpoch());
        QCOMPARE(CMatrix_SetMatrix(h, 3, 3, "Logged"), CMATRIX_OK);
        QCOMPARE(CMatrix_SetMatrix(h, 0, 3, "Refused"), CMATRIX_ERR_INVALID_PARAM); // not logged: nothing changed
        const ScreenResolution_t hd = mode(1280, 720, 60, -1);
        QCOMPARE(CMatrix_SetResolution(h, &hd, 1), CMATRIX_OK);
        int cols = 0, rows = 0;
        QCOMPARE(CMatrix_GetMatrix(h, &cols, &rows, nullptr, 0), CMATRIX_OK); // reading is not logged

        const std::vector<LogInfo_t> all = readLogs(h);
        QCOMPARE(int(all.size()), 2);
        QCOMPARE(QByteArray(all[0].content), QByteArray("Set the wall grid"));
        QCOMPARE(QByteArray(all[1].content), QByteArray("Set the output resolution"));
        QCOMPARE(QByteArray(all[0].user), QByteArray("admin"));
        QCOMPARE(all[0].type, LOG_TYPE_OPERATION);
        QVERIFY(all[0].time >= before && all[1].time <= uint32_t(QDateTime::currentSecsSinceEpoch()));
        QCOMPARE(int(readLogs(h, LOG_TYPE_OPERATION).size()), 2);
        QCOMPARE(int(readLogs(h, LOG_TYPE_ALARM).size()), 0);
        QCOMPARE(int(readLogs(h, LOG_TYPE_ALL, 0, before - 1).size()), 0);

        LogInfo_t* list = nullptr;
        QCOMPARE(CMatrix_GetLog(h, 7, 0, 10, &list), CMATRIX_ERR_INVALID_PARAM);
        QCOMPARE(CMatrix_GetLog(h, LOG_TYPE_ALL, 10, 0, &list), CMATRIX_ERR_INVALID_PARAM);
        QCOMPARE(CMatrix_GetLog(h, LOG_TYPE_ALL, 0, UINT32_MAX, &list), 2);
        QCOMPARE(CMatrix_FreeLog(h, list), CMATRIX_OK);
        QCOMPARE(CMatrix_FreeLog(h, list), CMATRIX_ERR_INVALID_PARAM); // already freed: refused, not freed twice

        const QByteArray runLog = files_.filePath("run.log").toLocal8Bit();
        QCOMPARE(CMatrix_GetRunLog(h, runLog), CMATRIX_OK);
        const QByteArray text = read(runLog);
        QVERIFY2(text.contains("login as admin accepted"), text.constData());
        QVERIFY(text.contains("Set the wall grid refused (-2)"));
        QVERIFY(text.contains("opened"));

        QVERIFY(d->restart());
        Client again;
        QCOMPARE(again.connect(d), CMATRIX_OK);
        QCOMPARE(int(readLogs(again.handle()).size()), 2); // kept with the state
    }
};

KVMS_TEST_MAIN(TestMaintenance)
#include "TestMaintenance.moc"
