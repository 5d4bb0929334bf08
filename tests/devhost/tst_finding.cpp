#include "devhost/announcement.h"
#include "devhost/device_finder.h"
#include "devhost/known_device.h"
#include "host/px_devices.h"
#include "tests/devhost/fake_device.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QUdpSocket>

using namespace devhost;

namespace {

FinderLimits limits(int lostAfterMs, int forgetAfterMs = 60000, int most = 500, int newASecond = 100)
{
    return {lostAfterMs, forgetAfterMs, most, newASecond};
}

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
    void hearsWhatCameWhileItWasBusy();
    void keepsFirstOfTwoWithOneName();
    void makesRoomByForgettingSpareOnes();
    void forgetsLongLost();
    void listsSoManyNewOnesASecond();
};

void Finding::readsAnnouncement()
{
    const auto heard = parseAnnouncement(with("KBX-0001", " KBX-0001  "));
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
    QTest::newRow("blank name") << with("KBX-0001", "  ");
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
    DeviceFinder finder(&list, limits(150));
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

void Finding::hearsWhatCameWhileItWasBusy()
{
    pxDevices list;
    DeviceFinder finder(&list, limits(200));
    finder.listenOn(loopbackInterface());
    FakeDevice device;
    device.announce("KBX-0001");
    QTRY_COMPARE(finder.devices().size(), 1);
    KnownDevice *known = finder.devices().first();
    QSignalSpy presence(known, &pxDevice::PresenceChanged);
    // Work that takes longer than the device may be silent, in a turn of the loop that looks at the timers,
    // too.
    QTimer everyTurn;
    everyTurn.start(0);
    QUdpSocket work;
    QVERIFY(work.bind(QHostAddress::LocalHost));
    connect(&work, &QUdpSocket::readyRead, &work, [&] {
        work.receiveDatagram();
        while (known->silentMs() < 400) { }
        device.announce("KBX-0001");
    });
    QUdpSocket().writeDatagram("work", QHostAddress::LocalHost, work.localPort());
    QTRY_VERIFY(!work.hasPendingDatagrams() && known->silentMs() < 200);
    QCOMPARE(presence.count(), 0);
}

void Finding::keepsFirstOfTwoWithOneName()
{
    pxDevices list;
    DeviceFinder finder(&list);
    finder.listenOn(loopbackInterface());
    QSignalSpy clash(&finder, &DeviceFinder::problem);
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

void Finding::makesRoomByForgettingSpareOnes()
{
    pxDevices list;
    DeviceFinder finder(&list, limits(60000, 60000, 3));
    finder.listenOn(loopbackInterface());
    QSignalSpy problem(&finder, &DeviceFinder::problem);
    FakeDevice device;
    const auto listed = [&finder](const char *name) { return finder.device(QLatin1String(name)); };
    for (const char *name : {"open", "first", "second"}) {
        device.announce(name);
        QTRY_VERIFY(listed(name));
        listed(name)->setPresent(false);
    }
    listed("open")->hold();
    const QPointer<KnownDevice> forgotten(listed("first"));
    device.announce("third");
    QTRY_VERIFY(listed("third"));
    QVERIFY(listed("open") && !listed("first") && listed("second"));
    QTRY_VERIFY(!forgotten);

    device.announce("fourth");
    for (const char *tooMany : {"fifth", "sixth", "open"})
        device.announce(tooMany);
    QTRY_VERIFY(listed("open")->isPresent());
    QVERIFY(listed("third") && listed("fourth"));
    QCOMPARE(finder.devices().size(), 3);
    QCOMPARE(list.list().size(), 3);
    QCOMPARE(problem.count(), 1);
}

void Finding::forgetsLongLost()
{
    pxDevices list;
    DeviceFinder finder(&list, limits(100, 200));
    finder.listenOn(loopbackInterface());
    FakeDevice device;
    device.announce("open");
    QTRY_COMPARE(finder.devices().size(), 1);
    KnownDevice *open = finder.devices().first();
    open->hold();
    device.announce("spare");
    QTRY_COMPARE(finder.devices().size(), 2);
    QTRY_COMPARE(finder.devices(), QList<KnownDevice *>{open});
    open->letGo();
    QTRY_VERIFY(finder.devices().isEmpty());
}

void Finding::listsSoManyNewOnesASecond()
{
    pxDevices list;
    DeviceFinder finder(&list, limits(2000, 60000, 500, 2));
    finder.listenOn(loopbackInterface());
    FakeDevice device;
    device.announce("open");
    QTRY_COMPARE(finder.devices().size(), 1);
    KnownDevice *open = finder.devices().first();
    open->hold();
    device.announce("other");
    QTRY_COMPARE(finder.devices().size(), 2);
    const KnownDevice *other = finder.devices().last();
    QElapsedTimer clock;
    clock.start();
    int number = 0;
    QTRY_VERIFY_WITH_TIMEOUT((device.announce(QByteArray::number(++number)), !other->isPresent()), 20000);
    QVERIFY(finder.devices().size() > 2);
    QVERIFY(finder.devices().size() <= 2 + 2 * (2 + clock.elapsed() / 1000));
    QVERIFY(finder.devices().size() < number);
    // Its announcements may have drowned in the others.
    QVERIFY(open->isPresent());
    QTRY_VERIFY(!open->isPresent());
}

QTEST_MAIN(Finding)
#include "tst_finding.moc"
