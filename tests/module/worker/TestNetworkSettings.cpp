// Network settings read and changed through the worker, activation, and local addresses.
#include "WorkerRig.h"

#include "LocalAddressList.h"
#include "QueuedSignalSpy.h"
#include "SuiteMain.h"
#include "TestTimeout.h"

#include "Messages.h"

#include <QtTest>

using cmatrix::wire::MessageType;
using kvms_matrix::LocalAddressList;
using kvms_matrix::MatrixInfo;
using kvms_matrix::MatrixSdkWorker;
using kvmstest::scaled;

class TestNetworkSettings : public QObject, public WorkerRig {
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(setUp()); }
    void cleanup() { QVERIFY(settle()); }
    void addressChangeKeepsBothKeyForms_data();
    void addressChangeKeepsBothKeyForms();
    void failedSetupLeavesTheMapAlone_data();
    void failedSetupLeavesTheMapAlone();
    void activation_data();
    void activation();
    void localAddressFilter_data();
    void localAddressFilter();
};

void TestNetworkSettings::addressChangeKeepsBothKeyForms_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("prefix");
    QTest::newRow("type 0") << 0 << QStringLiteral("VM~");
    QTest::newRow("type 3") << 3 << QStringLiteral("3~");
}

void TestNetworkSettings::addressChangeKeepsBothKeyForms()
{
    QFETCH(int, type);
    QFETCH(QString, prefix);
    vdec::VirtualDecoder* d = startQuiet();
    QVERIFY(d);
    // The unit is told over its loopback discovery port; 192.168.1.x are only texts in its record.
    QCOMPARE(Discovery_SetTargets(targetOf(d)), CMATRIX_OK);
    QCOMPARE(changeAddress(d, d->address(), "192.168.1.20", type), CMATRIX_OK);
    const InfoMap before = search(targetOf(d));
    QCOMPARE(before.keys(), QStringList({ "192.168.1.20" }));

    QCOMPARE(changeAddress(d, "192.168.1.20", "192.168.1.30", type), CMATRIX_OK);
    const QStringList after = describe(worker()->foundMatrixMap());
    QCOMPARE(after,
        QStringList({ describe(before).first(),
            prefix + "192.168.1.30: ip=192.168.1.30 id=" + QChar(0xFFFF)
                + " type=-1 port=0 manager=0 screens=0 status=0 version=" }));

    const DeviceNetworkCfg_t set = d->snapshot().network;
    QCOMPARE(QList<QByteArray>({ set.ipv4, set.mask, set.gateway, set.dns, set.ipv6, set.gatewayV6 }),
        QList<QByteArray>({ "192.168.1.30", "255.255.255.0", "192.168.1.1", "192.168.1.2", "fe80::20", "fe80::1" }));
    QCOMPARE(set.prefixV6, 64);

    // Changed back and forth, the prefixed entry moves each time; the search's entry stays.
    QCOMPARE(changeAddress(d, "192.168.1.30", "192.168.1.20", type), CMATRIX_OK);
    QCOMPARE(describe(worker()->foundMatrixMap()),
        QStringList({ describe(before).first(), QString(after.last()).replace("192.168.1.30", "192.168.1.20") }));
    QCOMPARE(changeAddress(d, "192.168.1.20", "192.168.1.30", type), CMATRIX_OK);
    QCOMPARE(describe(worker()->foundMatrixMap()), after);
    QCOMPARE(d->journal().count(MessageType::SetupNetwork), 4);

    // The unit reports the change when asked, and answers the next search from its new address.
    QueuedSignalSpy read(worker(), &MatrixSdkWorker::signalGetMatrixNetworkResult);
    worker()->getMatrixNetworkInfo(before.first(), type);
    QVERIFY(read.wait(scaled(4000)));
    const DeviceNetworkCfg_t got = read.first().at(0).value<DeviceNetworkCfg_t>();
    QCOMPARE(QList<QByteArray>({ got.devId, got.ipv4, got.dns }),
        QList<QByteArray>({ d->config().deviceId.toLatin1(), "192.168.1.30", "192.168.1.2" }));
    QCOMPARE(read.first().mid(1), QVariantList({ QStringLiteral("192.168.1.20"), type }));
    QCOMPARE(search(targetOf(d)).keys(), QStringList({ "192.168.1.30" }));
}

void TestNetworkSettings::failedSetupLeavesTheMapAlone_data()
{
    QTest::addColumn<QString>("password");
    QTest::addColumn<QString>("newIp");
    QTest::addColumn<QString>("mask");
    QTest::addColumn<bool>("anotherUnit");
    QTest::addColumn<int>("result");
    const QString good = QStringLiteral("admin123");
    const QString mask = QStringLiteral("255.255.255.0");
    QTest::newRow("wrong password") << "nope"
                                    << "192.168.1.40" << mask << false << CMATRIX_ERR_AUTH;
    // Cut one byte shorter it would be a valid address, and the wrong one.
    QTest::newRow("address filling its field")
        << good << "192.168.100.1001" << mask << false << CMATRIX_ERR_INVALID_PARAM;
    QTest::newRow("a unit that does not answer")
        << good << "192.168.1.40" << mask << true << CMATRIX_ERR_DEVICE_NOT_FOUND;
}

void TestNetworkSettings::failedSetupLeavesTheMapAlone()
{
    QFETCH(QString, password);
    QFETCH(QString, newIp);
    QFETCH(QString, mask);
    QFETCH(bool, anotherUnit);
    QFETCH(int, result);
    vdec::VirtualDecoder* d = startQuiet();
    vdec::VirtualDecoder* gone = startQuiet();
    QVERIFY(d && gone);
    gone->stop();
    const InfoMap before = search(targetOf(d) + "," + targetOf(gone));
    QCOMPARE(before.keys(), QStringList({ d->address() }));

    QCOMPARE(changeAddress(anotherUnit ? gone : d, d->address(), newIp, 0, password, mask), result);
    QCOMPARE(describe(worker()->foundMatrixMap()), describe(before));
    QCOMPARE(QByteArray(d->snapshot().network.ipv4), d->address().toLatin1());
}

void TestNetworkSettings::activation_data()
{
    QTest::addColumn<bool>("factoryNew");
    QTest::addColumn<QString>("address"); // empty: the unit's own
    QTest::addColumn<QString>("password");
    QTest::addColumn<int>("result");
    QTest::addColumn<int>("login"); // of admin with that password afterwards
    const QString strong = QStringLiteral("Strong2024");
    // A factory-new unit activated: the page's end-to-end suite, from the configuration dialog.
    QTest::newRow("weak password") << true << QString() << "weak1" << CMATRIX_ERR_WEAK_PASSWORD
                                   << CMATRIX_ERR_NOT_ACTIVATED;
    // Cut to fit the record it would set a password the operator never typed.
    QTest::newRow("password longer than its field") << true << QString() << "Abcdefgh1234567890Abcdefgh123456"
                                                    << CMATRIX_ERR_INVALID_PARAM << CMATRIX_ERR_NOT_ACTIVATED;
    QTest::newRow("unit already active") << false << QString() << strong << CMATRIX_ERR_ALREADY_ACTIVE
                                         << CMATRIX_ERR_PASSWORD;
    QTest::newRow("nobody at that address")
        << true << spare(1) << strong << CMATRIX_ERR_DEVICE_NOT_FOUND << CMATRIX_ERR_NOT_ACTIVATED;
}

void TestNetworkSettings::activation()
{
    QFETCH(bool, factoryNew);
    QFETCH(QString, address);
    QFETCH(QString, password);
    QFETCH(int, result);
    QFETCH(int, login);
    vdec::VirtualDecoder* d = startQuiet([&](vdec::DecoderConfig& c) { c.factoryNew = factoryNew; });
    QVERIFY(d);
    QCOMPARE(Discovery_SetTargets(targetOf(d)), CMATRIX_OK);

    QueuedSignalSpy finished(worker(), &MatrixSdkWorker::signalActiveDecoderFinished);
    worker()->activeDecoder(address.isEmpty() ? d->address() : address, password);
    QVERIFY(finished.wait(scaled(5000)));
    QCOMPARE(finished.first(), QVariantList({ result, MatrixSdkWorker::getErrorInfo(result) }));
    QCOMPARE(d->snapshot().activated, !factoryNew || result == CMATRIX_OK);

    QueuedSignalSpy connected(worker(), &MatrixSdkWorker::signalConnectMatrixResult);
    worker()->connectMatrix(infoOf(d, password), nullptr);
    QVERIFY(connected.wait(scaled(6000)));
    QCOMPARE(connected.first().at(1).toInt(), login);
}

void TestNetworkSettings::localAddressFilter_data()
{
    QTest::addColumn<QStringList>("addresses");
    QTest::addColumn<QStringList>("usable");
    QTest::newRow("loopback only") << QStringList { "127.0.0.1" } << QStringList();
    QTest::newRow("other loopback addresses")
        << QStringList { "127.0.0.1", "127.0.5.9", "10.1.2.3" } << QStringList { "10.1.2.3" };
    QTest::newRow("IPv6 left out") << QStringList { "::1", "fe80::1", "192.168.1.5" } << QStringList { "192.168.1.5" };
    QTest::newRow("order kept, each once")
        << QStringList { "192.168.1.5", "10.0.0.2", "192.168.1.5" } << QStringList { "192.168.1.5", "10.0.0.2" };
}

void TestNetworkSettings::localAddressFilter()
{
    QFETCH(QStringList, addresses);
    QFETCH(QStringList, usable);
    QList<QHostAddress> hosts;
    for (const QString& a : addresses)
        hosts << QHostAddress(a);
    QCOMPARE(LocalAddressList::usableIpv4(hosts), usable);
}

KVMS_TEST_CLASS(TestNetworkSettings)
#include "TestNetworkSettings.moc"
