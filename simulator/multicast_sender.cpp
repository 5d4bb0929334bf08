#include "simulator/multicast_sender.h"

namespace sim {

bool MulticastSender::open(const Station &station)
{
    if (!m_socket.bind(station.address, 0))
        return false;
    m_socket.setMulticastInterface(station.interface);
    return true;
}

void MulticastSender::send(const QByteArray &payload, const QHostAddress &group, quint16 port)
{
    m_socket.writeDatagram(payload, group, port);
}

} // namespace sim
