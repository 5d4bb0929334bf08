#include "devhost/host.h"
#include "devhost/known_device.h"
#include "devhost/options.h"
#include "tests/devhost/fake_device.h"

#include <QEventLoop>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

using namespace devhost;

namespace {

QString name()
{
    return QStringLiteral("KBX-0001");
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
    void saysWhatWasNotSent_data();
    void saysWhatWasNotSent();
    void sendsByHandApartFromEditors();

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

void Transport::saysWhatWasNotSent_data()
{
    QTest::addColumn<QString>("device");
    QTest::addColumn<int>("size");
    QTest::newRow("unknown device") << QStringLiteral("nobody") << 10;
    QTest::newRow("too large for a datagram") << name() << 70000;
}

void Transport::saysWhatWasNotSent()
{
    QFETCH(const QString, device);
    QFETCH(const int, size);
    QSignalSpy problem(m_transport.data(), &DeviceTransport::problem);
    QSignalSpy sent(m_transport.data(), &DeviceTransport::sent);
    m_transport->send(device, QByteArray(size, 'x'));
    QCOMPARE(sent.count(), 0);
    QCOMPARE(problem.count(), 1);
    QVERIFY(problem.first().first().toString().contains(device));
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

QTEST_MAIN(Transport)
#include "tst_transport.moc"
