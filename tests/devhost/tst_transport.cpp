#include "devhost/host.h"
#include "devhost/known_device.h"
#include "devhost/options.h"
#include "tests/devhost/fake_device.h"

#include <QEventLoop>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using namespace devhost;

namespace {

QString name()
{
    return QStringLiteral("KBX-0001");
}

/// The lines at @p path, with T for times and V for the host's version.
QStringList recordedLines(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QString text = QString::fromUtf8(file.readAll());
    text.replace(QRegularExpression(QStringLiteral("\"t_ms\":\\d+|\\d{4}-\\d\\d-\\d\\dT[\\d:]+Z")),
                 QStringLiteral("T"));
    text.replace(QRegularExpression(QStringLiteral("\"host\":\"[^\"]+\"")), QStringLiteral("V"));
    return text.split(QLatin1Char('\n'));
}

} // namespace

class Transport : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void carriesBytesUnchanged();
    void tellsDevicesApart();
    void keepsDeliveringInsideNestedLoop();
    void givesOthersTheirTurn();
    void saysWhatWasNotSent_data();
    void saysWhatWasNotSent();
    void sendsByHandApartFromEditors();
    void recordsDevicesMessagesAndLevels();

private:
    QScopedPointer<DeviceTransport> m_transport;
    QScopedPointer<FakeDevice> m_device;
};

void Transport::init()
{
    m_device.reset(new FakeDevice);
    m_transport.reset(new DeviceTransport);
    QCOMPARE(m_transport->open(), QString());
    m_transport->setRoute(name(), m_device->address(), m_device->port());
}

void Transport::carriesBytesUnchanged()
{
    const QByteArray request = QByteArray::fromHex("00ff7b0d0a");
    QSignalSpy sent(m_transport.data(), &DeviceTransport::sent);
    QSignalSpy received(m_transport.data(), &DeviceTransport::received);
    m_transport->send(name(), request);
    QTRY_COMPARE(m_device->heard(), QList<QByteArray>{request});
    QCOMPARE(sent.count(), 1);
    const QList<QByteArray> replies{QByteArray(), QByteArray("a\0b", 3), QByteArray(60000, 'x')};
    for (const QByteArray &reply : replies)
        m_device->answer(reply);
    QTRY_COMPARE(received.count(), replies.size());
    for (int i = 0; i < replies.size(); ++i)
        QCOMPARE(received.at(i), (QVariantList{name(), replies.at(i)}));
}

void Transport::tellsDevicesApart()
{
    // One address, two ports.
    FakeDevice other;
    m_transport->setRoute(QStringLiteral("other"), other.address(), other.port());
    QSignalSpy received(m_transport.data(), &DeviceTransport::received);
    m_transport->send(name(), "1");
    m_transport->send(QStringLiteral("other"), "2");
    QTRY_COMPARE(other.heard(), QList<QByteArray>{"2"});
    QTRY_COMPARE(m_device->heard(), QList<QByteArray>{"1"});
    other.answer("from other");
    QTRY_COMPARE(received.count(), 1);
    QCOMPARE(received.takeFirst().first().toString(), QStringLiteral("other"));
    m_device->answer("from first");
    QTRY_COMPARE(received.count(), 1);
    QCOMPARE(received.takeFirst().first().toString(), name());
    // Another name that comes from the first one's place takes nothing from it.
    const QString renamed = QStringLiteral("renamed");
    m_transport->setRoute(renamed, m_device->address(), m_device->port());
    for (const QString &asking : {name(), renamed, name()}) {
        m_transport->send(asking, asking.toUtf8());
        QTRY_COMPARE(m_device->heard().last(), asking.toUtf8());
        m_device->answer("reply");
        QTRY_COMPARE(received.count(), 1);
        QCOMPARE(received.takeFirst().first().toString(), asking);
    }
}

void Transport::keepsDeliveringInsideNestedLoop()
{
    QEventLoop dialog;
    bool openAtSecond = false;
    QSignalSpy received(m_transport.data(), &DeviceTransport::received);
    connect(m_transport.data(), &DeviceTransport::received, &dialog,
            [&](const QString &, const QByteArray &bytes) {
                openAtSecond = dialog.isRunning();
                if (bytes != "open a dialog") {
                    dialog.quit();
                    return;
                }
                QTimer::singleShot(0, &dialog, [this] { m_device->answer("while it is open"); });
                QTimer::singleShot(3000, &dialog, &QEventLoop::quit);
                dialog.exec();
            });
    m_transport->send(name(), "?");
    QTRY_VERIFY(!m_device->heard().isEmpty());
    m_device->answer("open a dialog");
    QTRY_COMPARE(received.count(), 2);
    QVERIFY(openAtSecond);
}

/// However many replies wait.
void Transport::givesOthersTheirTurn()
{
    constexpr int Replies = 100;
    QSignalSpy received(m_transport.data(), &DeviceTransport::received);
    m_transport->send(name(), "?");
    QTRY_VERIFY(!m_device->heard().isEmpty());
    for (int count = 0; count < Replies; ++count)
        m_device->answer("!");
    int before = 0;
    int mostAtOnce = 0;
    while (before < Replies) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        mostAtOnce = qMax(mostAtOnce, received.count() - before);
        before = received.count();
    }
    QVERIFY2(mostAtOnce < Replies / 2, QByteArray::number(mostAtOnce));
}

void Transport::saysWhatWasNotSent_data()
{
    QTest::addColumn<QString>("device");
    QTest::addColumn<int>("size");
    QTest::addColumn<QString>("advice");
    QTest::newRow("unknown device") << QStringLiteral("nobody") << 10 << QStringLiteral("no such device");
    QTest::newRow("too large for a datagram") << name() << 65508 << QStringLiteral("at most 65507 bytes");
}

void Transport::saysWhatWasNotSent()
{
    QFETCH(const QString, device);
    QFETCH(const int, size);
    QFETCH(const QString, advice);
    QSignalSpy problem(m_transport.data(), &DeviceTransport::problem);
    QSignalSpy sent(m_transport.data(), &DeviceTransport::sent);
    m_transport->send(device, QByteArray(size, 'x'));
    QCOMPARE(sent.count(), 0);
    QCOMPARE(problem.count(), 1);
    QCOMPARE(problem.first().first().toString(), device);
    QVERIFY(problem.first().last().toString().contains(device));
    QVERIFY(problem.first().last().toString().contains(advice));
}

void Transport::sendsByHandApartFromEditors()
{
    Host host;
    Options options;
    options.plugins = QStringList{QStringLiteral("none")};
    host.start(options, loopbackInterface());
    QSignalSpy editors(host.transport(), &DeviceTransport::received);
    m_device->announce(name().toUtf8());
    QTRY_VERIFY(host.finder()->device(name()));
    host.transport()->send(name(), "of an editor");
    QTRY_COMPARE(m_device->heard().size(), 1);
    const QByteArray binary = QByteArray::fromHex("00ff0d");
    const qint64 number = host.sendByHand(name(), binary);
    QTRY_COMPARE(m_device->heard().last(), binary);
    m_device->answer("NACK");
    QTRY_COMPARE(host.log()->numbered(number)->outcome, Outcome::Refused);
    QCOMPARE(host.log()->numbered(number)->message, binary);
    QCOMPARE(editors.count(), 0);
    QCOMPARE(host.requests()->figures(name()).waiting, 1);
    QCOMPARE(host.requests()->figures(name()).refused, 0);
    QCOMPARE(host.sendByHand(name(), QByteArray(70000, 'x')), qint64(-1));
    host.finder()->device(name())->setPresent(false);
    QCOMPARE(host.sendByHand(name(), "gone"), qint64(-1));
}

void Transport::recordsDevicesMessagesAndLevels()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("session.jsonl"));
    Host host;
    Options options;
    options.plugins = QStringList{QStringLiteral("none")};
    host.start(options, loopbackInterface());
    m_device->announce(name().toUtf8());
    QTRY_VERIFY(host.finder()->device(name()));
    // Before the recording, which has to know the group all the same.
    host.transport()->send(name(), "metering?");
    QTRY_COMPARE(m_device->heard().size(), 1);
    m_device->answer(
        R"({"cmd":"get","param":"/system/metering","result":"OK","value":{"ip":"239.255.77.10","port":47710}})");
    QTRY_VERIFY(host.log()->numbered(host.log()->newest())->isProblem());
    QCOMPARE(host.recorder()->start(path), QString());
#ifndef Q_OS_WIN // Wine gives every sender of this machine the same address
    QUdpSocket stranger;
    QVERIFY(stranger.bind(QHostAddress(QStringLiteral("127.0.0.2")), 0));
    stranger.setMulticastInterface(loopbackInterface());
    stranger.writeDatagram("no", QHostAddress(QStringLiteral("239.255.77.10")), 47710);
#endif
    m_device->multicast(QByteArray::fromHex("8100"), QStringLiteral("239.255.77.10"), 47710);
    QTRY_COMPARE(host.recorder()->lines(), qint64(3));
    host.sendByHand(name(), "get");
    QTRY_COMPARE(m_device->heard().last(), QByteArray("get"));
    m_device->answer(QByteArray::fromHex("ff"));
    QTRY_COMPARE(host.recorder()->lines(), qint64(5));
    host.recorder()->stop();
    const QString common = QStringLiteral("\"device\":\"KBX-0001\"");
    QCOMPARE(
        recordedLines(path),
        (QStringList{
            QStringLiteral("{\"created\":\"T\",V,\"recording\":1}"),
            QStringLiteral("{%1,\"dir\":\"device\",\"feature_level\":1,\"mac\":\"02:4B:42:58:00:01\","
                           "\"model\":\"FAKE\",\"product\":\"TarnKBX\",T,\"type\":1,\"version\":\"1.2.0\"}")
                .arg(common),
            QStringLiteral("{\"bytes\":\"gQA=\",%1,\"dir\":\"levels\",T}").arg(common),
            QStringLiteral("{%1,\"dir\":\"tx\",T,\"text\":\"get\"}").arg(common),
            QStringLiteral("{\"bytes\":\"/w==\",%1,\"dir\":\"rx\",T}").arg(common), QString()}));
}

QTEST_MAIN(Transport)
#include "tst_transport.moc"
