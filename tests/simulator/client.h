#pragma once

#include "tests/support/loopback.h"

#include <QNetworkDatagram>
#include <QTest>
#include <QUdpSocket>

namespace support {

/// The address of the devices that these tests run in their own process.
inline QHostAddress deviceAddress()
{
    return QHostAddress(QStringLiteral("127.0.0.11"));
}

/// Keeps what arrives at a socket, in its order.
struct Receiver
{
    /// In a multicast group on the loopback interface, or, without one, at a port of its own.
    explicit Receiver(const char *group = nullptr, quint16 port = 0)
    {
        socket.bind(QHostAddress::AnyIPv4, port,
                    QAbstractSocket::ShareAddress | QAbstractSocket::ReuseAddressHint);
        if (group)
            socket.joinMulticastGroup(QHostAddress(QLatin1String(group)), loopbackInterface());
        QObject::connect(&socket, &QUdpSocket::readyRead, [this] {
            while (socket.hasPendingDatagrams())
                received << socket.receiveDatagram().data();
        });
    }

    void ask(quint16 port, const QByteArray &request)
    {
        socket.writeDatagram(request, deviceAddress(), port);
    }

    QUdpSocket socket;
    QByteArrayList received;
};

/// Asks a device and waits for its answer; empty when none comes within half a second.
inline QByteArray ask(quint16 port, const QByteArray &request)
{
    Receiver client;
    client.ask(port, request);
    return QTest::qWaitFor([&] { return !client.received.isEmpty(); }, 500) ? client.received.first()
                                                                            : QByteArray();
}

} // namespace support
