#include "dsp/metering_socket.h"
#include "tests/support/loopback.h"

#include <QNetworkDatagram>
#include <QTest>

namespace {

constexpr quint16 port = 50123;

/// Takes datagrams the way the editor does: one for each readyRead.
class Listener : public QObject
{
public:
    explicit Listener(const QString &group = QStringLiteral("239.255.77.1"),
                      const QString &portText = QString::number(port))
        : socket(group, portText, loopbackInterface())
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
    void takesEveryDatagramBesideOthers();
    void survivesBadTexts();
    void tellsLevelsFromOtherDatagrams();
};

void MeteringSocketTest::takesEveryDatagramBesideOthers()
{
    QUdpSocket sender;
    QVERIFY(sender.bind(QHostAddress(QHostAddress::LocalHost)));
    sender.setMulticastInterface(loopbackInterface());
    Listener first;
    Listener second;
    QVector<QByteArray> sent{QByteArray(), QByteArray(), QByteArray(65507, '\x81')};
    for (int length = 1; length <= 19; ++length)
        sent.append(QByteArray(length, '\x81'));
    for (const QByteArray &payload : sent)
        QCOMPARE(sender.writeDatagram(payload, QHostAddress(first.socket.group()), port), payload.size());

    QTRY_COMPARE(first.received, sent);
    QTRY_COMPARE(second.received, sent);
    QVERIFY(!first.socket.takeDatagram().isValid());
}

void MeteringSocketTest::survivesBadTexts()
{
    const QString group = QStringLiteral("239.255.77.1");
    for (const char *badPort : {"", "5x", "115659", "-1"}) {
        Listener listener(group, QLatin1String(badPort));
        QVERIFY(listener.socket.localPort() != port);
        listener.socket.leaveGroup();
    }
    Listener elsewhere(QStringLiteral("10.1.2.3"), QString::number(port));
    QCOMPARE(elsewhere.socket.localPort(), port);
    elsewhere.socket.leaveGroup();
}

void MeteringSocketTest::tellsLevelsFromOtherDatagrams()
{
    const auto taken = [](const char *payload, const char *from, const char *device) {
        QNetworkDatagram datagram(payload);
        datagram.setSender(QHostAddress(QLatin1String(from)), 4000);
        return isLevelDatagram(datagram, QHostAddress(QLatin1String(device)));
    };
    QVERIFY(taken("\x81\xf6", "10.0.0.5", "10.0.0.5"));
    QVERIFY(taken("\x81\xf6", "::ffff:10.0.0.5", "10.0.0.5"));
    QVERIFY(!taken("\x81\xf6", "10.0.0.6", "10.0.0.5"));
    QVERIFY(!taken("\x81\xf6", "10.0.0.5", ""));
    QVERIFY(!taken("", "10.0.0.5", "10.0.0.5"));
    QVERIFY(!taken("\x80\x81", "10.0.0.5", "10.0.0.5"));
}

QTEST_GUILESS_MAIN(MeteringSocketTest)
#include "tst_metering_socket.moc"
