#pragma once

#include <QElapsedTimer>
#include <QHostAddress>
#include <QNetworkInterface>
#include <QTimer>
#include <QUdpSocket>

#include <functional>

namespace sim {

/// The address and the interface under which a device appears.
struct Station
{
    QHostAddress address{QHostAddress::LocalHost};
    QNetworkInterface interface;
};

/// One datagram and where it goes.
struct Packet
{
    QByteArray payload;
    QHostAddress group;
    quint16 port = 0;
};

/// Sends a datagram to a multicast group once an interval, from the device's own address on its own
/// interface. Each is asked for anew, so a change of the group moves the stream with its next datagram. One
/// that cannot be sent is lost, as on any network.
class MulticastStream : public QObject
{
    Q_OBJECT

public:
    MulticastStream(int intervalMs, const std::function<Packet()> &packet, QObject *parent = nullptr);

    /// False when the address is none of this machine's; errorText() says so.
    bool open(const Station &station);
    QString errorText() const { return m_socket.errorString(); }

    /// Sends for `ms` from now, for good when that is negative; the first datagram follows one interval after
    /// the stream began.
    void start(qint64 ms = -1);
    void stop() { m_timer.stop(); }
    void sendNow();

private:
    void sendDue();

    std::function<Packet()> m_packet;
    QUdpSocket m_socket;
    QTimer m_timer;
    QElapsedTimer m_sinceStart;
    qint64 m_lastsMs = -1;
};

} // namespace sim
