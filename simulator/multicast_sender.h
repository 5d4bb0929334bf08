#pragma once

#include <QHostAddress>
#include <QNetworkInterface>
#include <QUdpSocket>

namespace sim {

/// The address and the interface under which a device appears.
struct Station
{
    QHostAddress address{QHostAddress::LocalHost};
    QNetworkInterface interface;
};

/// Sends datagrams to multicast groups from the device's own address, on the device's own interface.
class MulticastSender
{
public:
    /// False when the address is none of this machine's; errorText() says so.
    bool open(const Station &station);
    QString errorText() const { return m_socket.errorString(); }

    /// A datagram that cannot be sent is lost, as on any network.
    void send(const QByteArray &payload, const QHostAddress &group, quint16 port);

private:
    QUdpSocket m_socket;
};

} // namespace sim
