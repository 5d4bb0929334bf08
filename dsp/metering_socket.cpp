#include "dsp/metering_socket.h"

#include <QNetworkDatagram>

namespace {

constexpr char levelMark = '\x81';
// No UDP payload is larger. Asking for the size of each datagram first would cost as much as reading it.
constexpr qint64 largestDatagram = 65536;

} // namespace

MeteringSocket::MeteringSocket(const QString &group, const QString &port, const QNetworkInterface &interface,
                               QObject *parent)
    : QUdpSocket(parent)
    , m_group(group)
    , m_port(port)
    , m_interface(interface)
{
    // Several editors on one machine may listen to the same group.
    if (bind(QHostAddress(QHostAddress::AnyIPv4), port.toUShort(), ShareAddress | ReuseAddressHint))
        joinMulticastGroup(QHostAddress(group), interface);
}

QNetworkDatagram MeteringSocket::takeDatagram()
{
    return receiveDatagram(largestDatagram);
}

void MeteringSocket::leaveGroup()
{
    if (state() == BoundState)
        leaveMulticastGroup(QHostAddress(m_group), m_interface);
}

bool isLevelDatagram(const QNetworkDatagram &datagram, const QHostAddress &device)
{
    return datagram.senderAddress().isEqual(device, QHostAddress::ConvertV4MappedToIPv4)
        && datagram.data().startsWith(levelMark);
}
