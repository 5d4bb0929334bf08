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

constexpr int SilenceMs = 300; ///< long enough for an answer on an idle machine, where silence is to be shown

/// Asks a device and waits for its answer; empty when none comes in time.
inline QByteArray ask(quint16 port, const QByteArray &request, int waitMs = 10000)
{
    Receiver client;
    client.ask(port, request);
    return QTest::qWaitFor([&] { return !client.received.isEmpty(); }, waitMs) ? client.received.first()
                                                                               : QByteArray();
}

} // namespace support
