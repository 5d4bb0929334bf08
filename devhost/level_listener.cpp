#include "devhost/level_listener.h"

#include "devhost/device_finder.h"
#include "devhost/known_device.h"
#include "devhost/wire_text.h"

#include <QJsonObject>
#include <QNetworkDatagram>
#include <QPair>
#include <QSet>
#include <QUdpSocket>

namespace devhost {

namespace {

constexpr int MostGroups = 32;
constexpr int MostATurn = 16;
constexpr int MostASecond = 1000;

} // namespace

LevelListener::LevelListener(const DeviceFinder *finder, QObject *parent)
    : QObject(parent)
    , m_finder(finder)
{
    m_second.start();
}

void LevelListener::hear(const QString &device, const QByteArray &reply)
{
    if (!reply.contains("\"/system/metering\""))
        return;
    const ReplyText read = readReply(reply);
    const QJsonObject value = read.value.toObject();
    const Group group{QHostAddress(value.value(QLatin1String("ip")).toString()),
                      quint16(value.value(QLatin1String("port")).toInt())};
    const Group known = m_groups.value(device);
    const bool isNew = known.address != group.address || known.port != group.port;
    if (read.verdict != Verdict::Confirmed || !group.address.isMulticast() || group.port == 0 || !isNew)
        return;
    if (m_groups.size() == MostGroups && !m_groups.contains(device))
        return;
    m_groups.insert(device, group);
    joinAll();
}

void LevelListener::setInterface(const QNetworkInterface &interface)
{
    m_interface = interface;
    joinAll();
}

void LevelListener::listen(bool on)
{
    m_listening = on;
    joinAll();
}

void LevelListener::joinAll()
{
    for (QUdpSocket *socket : qAsConst(m_sockets))
        socket->deleteLater(); // it may be the one that is being read
    m_sockets.clear();
    QSet<QPair<QHostAddress, quint16>> joined; // devices may share a group
    for (auto group = m_groups.cbegin(); m_listening && group != m_groups.cend(); ++group) {
        if (!joined.contains({group->address, group->port}))
            join(group.key(), group.value());
        joined.insert({group->address, group->port});
    }
}

void LevelListener::join(const QString &device, const Group &group)
{
    QUdpSocket *socket = socketAt(group.port);
    if (socket->state() == QAbstractSocket::BoundState
        && socket->joinMulticastGroup(group.address, m_interface))
        return;
    emit problem(
        tr("The levels of %1 are not recorded: the group %2, port %3 cannot be joined (%4). Check the "
           "network interface.")
            .arg(device, group.address.toString())
            .arg(group.port)
            .arg(socket->errorString()));
}

QUdpSocket *LevelListener::socketAt(quint16 port)
{
    QUdpSocket *&socket = m_sockets[port];
    if (!socket) {
        socket = new QUdpSocket(this);
        socket->bind(QHostAddress(QHostAddress::AnyIPv4), port,
                     QAbstractSocket::ShareAddress | QAbstractSocket::ReuseAddressHint);
        connect(socket, &QUdpSocket::readyRead, this, [this, socket] { read(socket); });
    }
    return socket;
}

void LevelListener::read(QUdpSocket *socket)
{
    // What is still there then, the socket reports again.
    for (int count = 0; count < MostATurn && socket->hasPendingDatagrams(); ++count) {
        const QNetworkDatagram datagram = socket->receiveDatagram();
        take(datagram.senderAddress(), socket->localPort(), datagram.data());
    }
}

void LevelListener::take(const QHostAddress &sender, quint16 port, const QByteArray &datagram)
{
    if (m_second.elapsed() >= 1000) {
        m_second.start();
        m_thisSecond = 0;
    }
    for (auto group = m_groups.cbegin(); group != m_groups.cend(); ++group) {
        const KnownDevice *device = m_finder->device(group.key());
        if (group->port != port || !device || device->ipAddress() != sender)
            continue;
        if (++m_thisSecond <= MostASecond)
            emit levels(group.key(), datagram);
        return;
    }
}

} // namespace devhost
