#include "devhost/announcement.h"
#include "devhost/device_finder.h"
#include "devhost/known_device.h"
#include "host/px_devices.h"
#include "tests/devhost/fake_device.h"

#include <QSignalSpy>
#include <QTest>

using namespace devhost;

namespace {

constexpr int LostAfterMs = 150;

QByteArray good()
{
    return R"({"announce":"plexo","name":"KBX-0001","type":1,"product":"TarnKBX","model":"KBX",)"
           R"("mac":"02:4B:42:58:00:01","version":"1.2.0","feature_level":1,"control_port":47800})";
}

QByteArray with(const QByteArray &before, const QByteArray &after)
{
    QByteArray changed = good();
    changed.replace(before, after);
    return changed;
}

} // namespace

class Finding : public QObject
{
    Q_OBJECT

private slots:
    void readsAnnouncement();
    void refusesAnnouncement_data();
    void refusesAnnouncement();
    void findsLosesAndFindsAgain();
    void keepsFirstOfTwoWithOneName();
};

void Finding::readsAnnouncement()
{
    const auto heard = parseAnnouncement(good());
    QVERIFY(heard);
    QCOMPARE(heard->name, QStringLiteral("KBX-0001"));
    QCOMPARE(heard->type, pxDevice::DEV_TYPE_NETWORK);
    QCOMPARE(heard->product, QStringLiteral("TarnKBX"));
    QCOMPARE(heard->model, QStringLiteral("KBX"));
    QCOMPARE(heard->mac, QStringLiteral("02:4B:42:58:00:01"));
    QCOMPARE(heard->version, 1002000U);
    QCOMPARE(heard->featureLevel, 1U);
    QCOMPARE(heard->controlPort, quint16(47800));
}

void Finding::refusesAnnouncement_data()
{
    QTest::addColumn<QByteArray>("datagram");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("an array") << '[' + good() + ']';
    QTest::newRow("another announcement") << with("plexo", "Plexo");
    QTest::newRow("no name") << with("\"name\"", "\"nome\"");
    QTest::newRow("name over two lines") << with("KBX-0001", "KBX\\n0001");
    QTest::newRow("long name") << with("KBX-0001", QByteArray(65, 'x'));
    QTest::newRow("no model") << with("\"KBX\"", "null");
    QTest::newRow("bad version") << with("1.2.0", "1.2");
    QTest::newRow("no port") << with(",\"control_port\":47800", "");
    QTest::newRow("port 0") << with("47800", "0");
    QTest::newRow("oversized") << good() + QByteArray(4096, ' ');
}

void Finding::refusesAnnouncement()
{
    QFETCH(const QByteArray, datagram);
    QVERIFY(!parseAnnouncement(datagram));
}

void Finding::findsLosesAndFindsAgain()
{
    pxDevices list;
    DeviceFinder finder(&list, LostAfterMs);
    QCOMPARE(finder.listenOn(loopbackInterface()), QString());
    QSignalSpy found(&finder, &DeviceFinder::found);
    FakeDevice device;
    device.announce("KBX\"broken");
    device.announce("KBX-0001");
    QTRY_COMPARE(found.count(), 1);
    KnownDevice *known = finder.device(QStringLiteral("KBX-0001"));
    QVERIFY(known && known->isPresent());
    QCOMPARE(known->ipAddress(), QHostAddress(QHostAddress::LocalHost));
    QCOMPARE(list.list(), QList<pxDevice *>{known});

    QTRY_VERIFY(!known->isPresent());
    device.announce("KBX-0001");
    QTRY_VERIFY(known->isPresent());
    QCOMPARE(found.count(), 1);
    QCOMPARE(finder.devices().size(), 1);
}

void Finding::keepsFirstOfTwoWithOneName()
{
    pxDevices list;
    DeviceFinder finder(&list, 60000);
    finder.listenOn(loopbackInterface());
    QSignalSpy clash(&finder, &DeviceFinder::nameClash);
    FakeDevice first;
    FakeDevice second(QHostAddress(QStringLiteral("127.0.0.2")));
    second.mac = "02:4B:42:58:00:02";
    first.announce("KBX-0001");
    QTRY_VERIFY(finder.device(QStringLiteral("KBX-0001")));
    second.announce("KBX-0001");
    second.announce("KBX-0001");
    second.announce("KBX-0002");
    QTRY_VERIFY(finder.device(QStringLiteral("KBX-0002")));
    QCOMPARE(finder.device(QStringLiteral("KBX-0001"))->ipAddress(), first.address());
    QCOMPARE(clash.count(), 1);
    const QString sentence = clash.first().first().toString();
    QVERIFY2(sentence.contains(QStringLiteral("127.0.0.2")), qPrintable(sentence));
    // The first one has got another address.
    second.mac = first.mac;
    second.announce("KBX-0001");
    QTRY_COMPARE(finder.device(QStringLiteral("KBX-0001"))->ipAddress(), second.address());
    QCOMPARE(clash.count(), 1);
}

QTEST_MAIN(Finding)
#include "tst_finding.moc"
