#pragma once

#include <QNetworkInterface>
#include <QString>
#include <QUdpSocket>

class QNetworkDatagram;

/// The socket on which a device's level datagrams arrive: bound to every local IPv4 address and joined to
/// one multicast group on one interface, both from construction on.
///
/// A bind or join that fails leaves a socket that receives nothing; errorString() says why. After every
/// readyRead() the owner takes exactly one datagram: Qt announces the next one only after a read.
class MeteringSocket : public QUdpSocket
{
    Q_OBJECT

public:
    /// @p group is dotted IPv4 text, @p port a decimal number; texts that are neither receive nothing.
    MeteringSocket(const QString &group, const QString &port, const QNetworkInterface &interface,
                   QObject *parent = nullptr);

    /// The texts that the socket was built with, to be compared with what is wanted now.
    QString group() const { return m_group; }
    QString port() const { return m_port; }

    /// One datagram, empty ones included. Invalid when none is pending.
    QNetworkDatagram takeDatagram();

    /// Leaves the group on the interface on which it was joined. Nothing arrives afterwards.
    void leaveGroup();

private:
    QString m_group;
    QString m_port;
    QNetworkInterface m_interface;
};

/// Whether a datagram holds levels of the device at @p device: sent by that address (also when the system
/// reports it as an IPv4-mapped IPv6 address) and marked by a first byte of 0x81.
bool isLevelDatagram(const QNetworkDatagram &datagram, const QHostAddress &device);
