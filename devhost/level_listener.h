#pragma once

#include <QElapsedTimer>
#include <QHash>
#include <QHostAddress>
#include <QNetworkInterface>
#include <QObject>

class QUdpSocket;

namespace devhost {

class DeviceFinder;

/// Listens to the levels that devices send to their multicast groups. It learns the groups from the devices'
/// replies about "/system/metering". It joins at most 32 of them and passes on at most 1000 datagrams a
/// second.
class LevelListener : public QObject
{
    Q_OBJECT

public:
    /// @p finder is not owned.
    explicit LevelListener(const DeviceFinder *finder, QObject *parent = nullptr);

    /// Looks into a reply of the device for its group.
    void hear(const QString &device, const QByteArray &reply);
    void setInterface(const QNetworkInterface &interface);
    /// Joins the groups, or leaves them.
    void listen(bool on);

signals:
    void levels(const QString &device, const QByteArray &datagram);
    /// A sentence for the user.
    void problem(const QString &sentence);

private:
    struct Group
    {
        QHostAddress address;
        quint16 port = 0;
    };

    void joinAll();
    void join(const QString &device, const Group &group);
    QUdpSocket *socketAt(quint16 port);
    void read(QUdpSocket *socket);
    void take(const QHostAddress &sender, quint16 port, const QByteArray &datagram);

    const DeviceFinder *m_finder;
    QNetworkInterface m_interface;
    QHash<QString, Group> m_groups; ///< by device
    QHash<quint16, QUdpSocket *> m_sockets; ///< one a port: each would receive the groups of all others there
    bool m_listening = false;
    QElapsedTimer m_second;
    int m_thisSecond = 0;
};

} // namespace devhost
