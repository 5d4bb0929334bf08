#include "dsp/metering_socket.h"

#include <QNetworkDatagram>
#include <QSignalSpy>
#include <QTest>

namespace {

const char group[] = "239.255.77.1";
constexpr quint16 port = 50123;

QNetworkInterface loopback()
{
    return QNetworkInterface::interfaceFromName(QStringLiteral("lo"));
}

QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

/// Takes datagrams the way the editor does: one for each readyRead.
class Listener : public QObject
{
public:
    explicit Listener(const QString &groupText = text(group), const QString &portText = QString::number(port))
        : socket(groupText, portText, loopback())
    {
        connect(&socket, &QUdpSocket::readyRead, this, [this] { received.append(socket.takeDatagram()); });
    }

    MeteringSocket socket;
    QVector<QNetworkDatagram> received;
};

/// Sends to the group from one of the loopback's addresses.
class Sender
{
public:
    explicit Sender(const char *address = "127.0.0.1")
    {
        m_socket.bind(QHostAddress(text(address)));
        m_socket.setMulticastInterface(loopback());
    }

    bool send(const QByteArray &payload, const char *to = group)
    {
        return m_socket.writeDatagram(payload, QHostAddress(text(to)), port) == payload.size();
    }

private:
    QUdpSocket m_socket;
};

} // namespace

/// The socket of the level datagrams, over a real multicast group on the loopback interface.
class MeteringSocketTest : public QObject
{
    Q_OBJECT

private slots:
    void takesEveryDatagram();
    void sharesItsPort();
    void leavesItsGroup();
    void survivesBadTexts_data();
    void survivesBadTexts();
    void tellsLevelsFromOtherDatagrams_data();
    void tellsLevelsFromOtherDatagrams();
    void tellsSendersApart();
};

void MeteringSocketTest::takesEveryDatagram()
{
    Listener listener;
    QCOMPARE(listener.socket.group(), text(group));
    QCOMPARE(listener.socket.port(), QStringLiteral("50123"));

    Sender sender;
    QVector<QByteArray> sent{QByteArray(), QByteArray(), QByteArray(65507, '\x81')};
    for (int length = 1; length <= 19; ++length)
        sent.append(QByteArray(length, '\x81'));
    for (const QByteArray &payload : sent)
        QVERIFY(sender.send(payload));

    QTRY_COMPARE(listener.received.size(), sent.size());
    for (int i = 0; i < sent.size(); ++i)
        QCOMPARE(listener.received.at(i).data(), sent.at(i));
    QVERIFY(!listener.socket.takeDatagram().isValid());
}

void MeteringSocketTest::sharesItsPort()
{
    Listener first;
    Listener second;
    Sender sender;
    QVERIFY(sender.send("\x81"));
    QTRY_COMPARE(first.received.size(), 1);
    QTRY_COMPARE(second.received.size(), 1);
}

void MeteringSocketTest::leavesItsGroup()
{
    Listener left;
    left.socket.leaveGroup();
    Listener witness(text("239.255.77.2"));
    Sender sender;
    QVERIFY(sender.send("gone"));
    QVERIFY(sender.send("here", "239.255.77.2"));
    QTRY_VERIFY(!witness.received.isEmpty());
    for (const QNetworkDatagram &datagram : left.received)
        QVERIFY(datagram.data() != "gone");
}

void MeteringSocketTest::survivesBadTexts_data()
{
    QTest::addColumn<QString>("groupText");
    QTest::addColumn<QString>("portText");
    QTest::addColumn<bool>("onPort");
    const QString portText = QString::number(port);
    QTest::newRow("empty") << QString() << QString() << false;
    QTest::newRow("group is no address") << text("metering") << portText << true;
    QTest::newRow("group is no multicast group") << text("10.1.2.3") << portText << true;
    QTest::newRow("port is no number") << text(group) << text("5x") << false;
    QTest::newRow("port too high") << text(group) << QString::number(65536 + port) << false;
    QTest::newRow("port negative") << text(group) << text("-1") << false;
}

void MeteringSocketTest::survivesBadTexts()
{
    QFETCH(QString, groupText);
    QFETCH(QString, portText);
    QFETCH(bool, onPort);
    Listener listener(groupText, portText);
    QCOMPARE(listener.socket.localPort() == port, onPort);
    QCOMPARE(listener.socket.group(), groupText);
    QCOMPARE(listener.socket.port(), portText);
    listener.socket.leaveGroup();

    Listener next;
    Sender sender;
    QVERIFY(sender.send("\x81"));
    QTRY_COMPARE(next.received.size(), 1);
}

void MeteringSocketTest::tellsLevelsFromOtherDatagrams_data()
{
    QTest::addColumn<QByteArray>("payload");
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("device");
    QTest::addColumn<bool>("expected");
    const QByteArray levels(19, '\x81');
    const QString address = text("10.0.0.5");
    QTest::newRow("levels") << levels << address << address << true;
    QTest::newRow("one byte") << levels.left(1) << address << address << true;
    QTest::newRow("mapped sender") << levels << text("::ffff:10.0.0.5") << address << true;
    QTest::newRow("mapped device") << levels << address << text("::ffff:10.0.0.5") << true;
    QTest::newRow("other sender") << levels << text("10.0.0.6") << address << false;
    QTest::newRow("no device") << levels << address << QString() << false;
    QTest::newRow("empty") << QByteArray() << address << address << false;
    QTest::newRow("0x80") << QByteArray("\x80\x81") << address << address << false;
    QTest::newRow("0x01") << QByteArray("\x01\x81") << address << address << false;
}

void MeteringSocketTest::tellsLevelsFromOtherDatagrams()
{
    QFETCH(QByteArray, payload);
    QFETCH(QString, from);
    QFETCH(QString, device);
    QNetworkDatagram datagram(payload);
    datagram.setSender(QHostAddress(from), 4000);
    QTEST(isLevelDatagram(datagram, QHostAddress(device)), "expected");
}

void MeteringSocketTest::tellsSendersApart()
{
    Listener listener;
    Sender device("127.0.0.2");
    Sender stranger("127.0.0.1");
    QVERIFY(stranger.send("\x81"));
    QVERIFY(device.send("\x81"));
    QTRY_COMPARE(listener.received.size(), 2);
    const QHostAddress deviceAddress(text("127.0.0.2"));
    QVERIFY(!isLevelDatagram(listener.received.first(), deviceAddress));
    QVERIFY(isLevelDatagram(listener.received.last(), deviceAddress));
}

QTEST_GUILESS_MAIN(MeteringSocketTest)
#include "tst_metering_socket.moc"
