#include "devhost/device_transport.h"

#include <QNetworkDatagram>

namespace devhost {

namespace {

// However fast replies come, and however large they are, other events have their turn.
constexpr int MostATurn = 16;
constexpr int MostBytesATurn = 64 * 1024;

constexpr int MostSentBytes = 65507; // of one IPv4 datagram (RFC 768, RFC 791)

} // namespace

DeviceTransport::DeviceTransport(QObject *parent)
    : QObject(parent)
{
    connect(&m_socket, &QUdpSocket::readyRead, this, &DeviceTransport::readPending);
}

QString DeviceTransport::open()
{
    if (m_socket.bind(QHostAddress(QHostAddress::AnyIPv4), 0))
        return QString();
    return tr("No device can be reached: the system gave no UDP port (%1). Close other network programs and "
              "start again.")
        .arg(m_socket.errorString());
}

void DeviceTransport::setRoute(const QString &name, const QHostAddress &address, quint16 port)
{
    removeRoute(name);
    const Place place(address, port);
    m_routes.insert(name, place);
    if (!m_askers.contains(place))
        m_askers.insert(place, name);
}

void DeviceTransport::removeRoute(const QString &name)
{
    const auto asker = m_askers.find(m_routes.take(name));
    if (asker != m_askers.end() && *asker == name)
        m_askers.erase(asker);
}

bool DeviceTransport::send(const QString &name, const QByteArray &bytes)
{
    const auto route = m_routes.constFind(name);
    if (route == m_routes.constEnd()) {
        emit problem(name, tr("A message for %1 was not sent: no such device is present.").arg(name));
        return false;
    }
    m_sending.start();
    if (m_socket.writeDatagram(bytes, route->first, route->second) != bytes.size()) {
        const bool isTooLarge = m_socket.error() == QAbstractSocket::DatagramTooLargeError;
        emit problem(name,
                     tr("A message of %1 bytes for %2 was not sent (%3). %4")
                         .arg(bytes.size())
                         .arg(name, m_socket.errorString(),
                              isTooLarge ? tr("One message takes at most %1 bytes.").arg(MostSentBytes)
                                         : tr("Check the network interface.")));
        return false;
    }
    m_askers.insert(*route, name);
    emit sent(name, bytes);
    return true;
}

void DeviceTransport::readPending()
{
    // What is still there then, the socket reports again.
    int bytes = 0;
    for (int count = 0; count < MostATurn && bytes < MostBytesATurn; ++count) {
        const QNetworkDatagram datagram = m_socket.receiveDatagram();
        if (!datagram.isValid())
            return;
        bytes += datagram.data().size();
        const QString name = m_askers.value({datagram.senderAddress(), quint16(datagram.senderPort())});
        if (name.isEmpty())
            continue;
        // Queued: a plugin may open a message box on a reply, and the socket reports nothing more, for any
        // device, until this function has returned.
        QElapsedTimer arrival;
        arrival.start();
        const auto tell = [this, name, arrival, data = datagram.data()] {
            m_arrival = arrival;
            emit received(name, data);
        };
        QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
    }
}

} // namespace devhost
