#include "dsp/metering_socket.h"

#include <QNetworkDatagram>
#include <QTest>

namespace {

constexpr quint16 port = 50123;

QNetworkInterface loopback()
{
    return QNetworkInterface::interfaceFromName(QStringLiteral("lo"));
}

/// Takes datagrams the way the editor does: one for each readyRead.
class Listener : public QObject
{
public:
    explicit Listener(const QString &group = QStringLiteral("239.255.77.1"),
                      const QString &portText = QString::number(port))
        : socket(group, portText, loopback())
    {
        connect(&socket, &QUdpSocket::readyRead, this,
                [this] { received.append(socket.takeDatagram().data()); });
    }

    MeteringSocket socket;
    QVector<QByteArray> received;
};

} // namespace

/// The socket of the level datagrams, over a real multicast group on the loopback interface.
class MeteringSocketTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void takesEveryDatagramBesideOthers();
    void survivesBadTexts_data();
    void survivesBadTexts();
    void tellsLevelsFromOtherDatagrams_data();
    void tellsLevelsFromOtherDatagrams();

private:
    bool send(const QByteArray &payload, const char *group = "239.255.77.1")
    {
        return m_sender.writeDatagram(payload, QHostAddress(QLatin1String(group)), port) == payload.size();
    }

    QUdpSocket m_sender;
};

void MeteringSocketTest::initTestCase()
{
    QVERIFY(m_sender.bind(QHostAddress(QHostAddress::LocalHost)));
    m_sender.setMulticastInterface(loopback());
}

void MeteringSocketTest::takesEveryDatagramBesideOthers()
{
    Listener first;
    Listener second;
    QVector<QByteArray> sent{QByteArray(), QByteArray(), QByteArray(65507, '\x81')};
    for (int length = 1; length <= 19; ++length)
        sent.append(QByteArray(length, '\x81'));
    for (const QByteArray &payload : sent)
        QVERIFY(send(payload));

    QTRY_COMPARE(first.received, sent);
    QTRY_COMPARE(second.received, sent);
    QVERIFY(!first.socket.takeDatagram().isValid());
}

void MeteringSocketTest::survivesBadTexts_data()
{
    QTest::addColumn<QString>("group");
    QTest::addColumn<QString>("portText");
    QTest::addColumn<bool>("onPort");
    const QString good = QStringLiteral("239.255.77.1");
    QTest::newRow("empty") << QString() << QString() << false;
    QTest::newRow("no multicast group") << QStringLiteral("10.1.2.3") << QString::number(port) << true;
    QTest::newRow("port is no number") << good << QStringLiteral("5x") << false;
    QTest::newRow("port too high") << good << QString::number(65536 + port) << false;
    QTest::newRow("port negative") << good << QStringLiteral("-1") << false;
}

void MeteringSocketTest::survivesBadTexts()
{
    QFETCH(QString, group);
    QFETCH(QString, portText);
    Listener listener(group, portText);
    QTEST(listener.socket.localPort() == port, "onPort");
    QCOMPARE(listener.socket.group(), group);
    QCOMPARE(listener.socket.port(), portText);
    listener.socket.leaveGroup();
}

void MeteringSocketTest::tellsLevelsFromOtherDatagrams_data()
{
    QTest::addColumn<QByteArray>("payload");
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("device");
    QTest::addColumn<bool>("expected");
    const QByteArray levels("\x81\xf6");
    const QString address = QStringLiteral("10.0.0.5");
    QTest::newRow("levels") << levels << address << address << true;
    QTest::newRow("mapped sender") << levels << QStringLiteral("::ffff:10.0.0.5") << address << true;
    QTest::newRow("mapped device") << levels << address << QStringLiteral("::ffff:10.0.0.5") << true;
    QTest::newRow("other sender") << levels << QStringLiteral("10.0.0.6") << address << false;
    QTest::newRow("no device") << levels << address << QString() << false;
    QTest::newRow("empty") << QByteArray() << address << address << false;
    QTest::newRow("0x80") << QByteArray("\x80\x81") << address << address << false;
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

QTEST_GUILESS_MAIN(MeteringSocketTest)
#include "tst_metering_socket.moc"
