#include "HostTests.h"

#include "DevsMgrData.h"
#include "MatrixData.h"

#include <QSignalSpy>
#include <QtTest>

namespace {

const QByteArray kCatalogue = R"({
  "devices": [
    { "id": "CAM0001", "name": "Lobby", "serial": "SN-A1", "ip": "127.0.0.10", "port": 8000,
      "user": "admin", "password": "pw1",
      "channels": [ { "channel": 1, "name": "Lobby door" }, { "channel": 2 } ] },
    { "id": "NVR0002", "name": "Yard", "ip": "127.0.0.11", "port": 8000,
      "channels": [ { "channel": 1, "name": "Gate" } ] }
  ],
  "groups": [ { "id": "g1", "name": "Entrances", "channels": [ "NVR0002&1", "CAM0001&1" ] } ]
})";

} // namespace

class TestData : public QObject {
    Q_OBJECT

private slots:
    void badCatalogueKeepsTheOldOne_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::newRow("not JSON") << QByteArray("{ \"devices\": [");
        QTest::newRow("array") << QByteArray("[]");
        QTest::newRow("device without id") << QByteArray(R"({"devices":[{"name":"x"}]})");
        QTest::newRow("device twice") << QByteArray(R"({"devices":[{"id":"A"},{"id":"A"}]})");
        QTest::newRow("port out of range") << QByteArray(R"({"devices":[{"id":"A","port":70000}]})");
        QTest::newRow("channel without number") << QByteArray(R"({"devices":[{"id":"A","channels":[{"name":"c"}]}]})");
        QTest::newRow("channel twice") << QByteArray(
            R"({"devices":[{"id":"A","channels":[{"channel":1},{"channel":1}]}]})");
        QTest::newRow("group with unknown channel")
            << QByteArray(R"({"devices":[{"id":"A"}],"groups":[{"id":"g","channels":["A&1"]}]})");
    }

    void badCatalogueKeepsTheOldOne()
    {
        QFETCH(QByteArray, json);
        DevsMgrData data;
        QVERIFY(data.loadFromJson(kCatalogue));
        QSignalSpy changed(&data, &DevsMgrData::signalCatalogueChanged);

        QString error;
        QVERIFY(!data.loadFromJson(json, &error));
        QVERIFY(!error.isEmpty());
        QCOMPARE(changed.count(), 0);
        QCOMPARE(data.devices().size(), 2);
        QCOMPARE(data.groups().size(), 1);
    }

    void deviceLookups_data()
    {
        QTest::addColumn<QString>("by");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("found");
        QTest::newRow("id") << "id"
                            << "NVR0002"
                            << "NVR0002";
        QTest::newRow("unknown id") << "id"
                                    << "CAM9999"
                                    << "";
        QTest::newRow("serial") << "serial"
                                << "SN-A1"
                                << "CAM0001";
        QTest::newRow("empty serial") << "serial"
                                      << ""
                                      << ""; // NVR0002 has none
        QTest::newRow("ip") << "ip"
                            << "127.0.0.11"
                            << "NVR0002";
        QTest::newRow("unknown ip") << "ip"
                                    << "127.0.0.99"
                                    << "";
    }

    void deviceLookups()
    {
        QFETCH(QString, by);
        QFETCH(QString, key);
        QFETCH(QString, found);
        DevsMgrData data;
        QVERIFY(data.loadFromJson(kCatalogue));

        DevRecord device;
        bool hit = false;
        if (by == QLatin1String("id"))
            hit = data.deviceById(key, &device);
        else if (by == QLatin1String("serial"))
            hit = data.deviceBySerialNumber(key, &device);
        else
            hit = data.deviceByIp(key, &device);
        QCOMPARE(hit, !found.isEmpty());
        if (hit)
            QCOMPARE(device.id, found);
    }

    void channelsAndGroups()
    {
        DevsMgrData data;
        QVERIFY(data.loadFromJson(kCatalogue));

        ChannelRecord channel;
        QVERIFY(data.channelById(QStringLiteral("CAM0001&2"), &channel));
        QCOMPARE(channel.deviceId, QStringLiteral("CAM0001"));
        QCOMPARE(channel.channel, 2);
        QCOMPARE(channel.name, QStringLiteral("Lobby-2")); // unnamed channels get a name

        const QList<ChannelRecord> members = data.groupChannels(QStringLiteral("g1"));
        QCOMPARE(members.size(), 2);
        QCOMPARE(members[0].name, QStringLiteral("Gate")); // in the group's order
        QCOMPARE(members[1].name, QStringLiteral("Lobby door"));
    }

    void matrixStreamsHaveUniqueNames()
    {
        MatrixData data;
        QVERIFY(data.addStream({ QStringLiteral("hall"), QStringLiteral("rtsp://127.0.0.1/hall") }));
        QVERIFY(!data.addStream({ QStringLiteral("hall"), QStringLiteral("rtsp://127.0.0.1/other") }));
        QVERIFY(!data.addStream({ QStringLiteral("no url"), QString() }));
        MatrixStream stream;
        QVERIFY(data.streamByName(QStringLiteral("hall"), &stream));
        QCOMPARE(stream.url, QStringLiteral("rtsp://127.0.0.1/hall"));
        QVERIFY(data.removeStream(QStringLiteral("hall")));
        QVERIFY(!data.removeStream(QStringLiteral("hall")));
        QVERIFY(data.streams().isEmpty());
    }
};

QObject* createDataTests()
{
    return new TestData;
}

#include "TestData.moc"
