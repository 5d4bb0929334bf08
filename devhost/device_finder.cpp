#include "devhost/device_finder.h"

#include "devhost/announcement.h"
#include "devhost/known_device.h"
#include "host/px_devices.h"

#include <QNetworkDatagram>
#include <QUdpSocket>

#include <algorithm>

namespace devhost {

namespace {

constexpr char AnnouncementGroup[] = "239.255.77.1";
constexpr quint16 AnnouncementPort = 47700;

} // namespace

DeviceFinder::DeviceFinder(pxDevices *devices, int lostAfterMs, QObject *parent)
    : QObject(parent)
    , m_list(devices)
    , m_lostAfterMs(lostAfterMs)
{
}

DeviceFinder::~DeviceFinder() = default;

QString DeviceFinder::listenOn(const QNetworkInterface &interface)
{
    m_socket.reset(new QUdpSocket);
    m_interfaceIndex = interface.index();
    connect(m_socket.data(), &QUdpSocket::readyRead, this, &DeviceFinder::readPending);
    const QUdpSocket::BindMode shared = QUdpSocket::ShareAddress | QUdpSocket::ReuseAddressHint;
    if (!m_socket->bind(QHostAddress(QHostAddress::AnyIPv4), AnnouncementPort, shared)) {
        return tr("No device can be found: UDP port %1 is not available (%2). Close the program that uses "
                  "it and choose the interface again.")
            .arg(AnnouncementPort)
            .arg(m_socket->errorString());
    }
    if (!m_socket->joinMulticastGroup(QHostAddress(QLatin1String(AnnouncementGroup)), interface)) {
        return tr("No device can be found on %1: joining the group %2 failed (%3). Choose another interface.")
            .arg(interface.humanReadableName(), QLatin1String(AnnouncementGroup), m_socket->errorString());
    }
    return QString();
}

KnownDevice *DeviceFinder::device(const QString &name) const
{
    const auto at = std::find_if(m_devices.cbegin(), m_devices.cend(),
                                 [&name](const KnownDevice *device) { return device->name() == name; });
    return at == m_devices.cend() ? nullptr : *at;
}

void DeviceFinder::readPending()
{
    while (m_socket->hasPendingDatagrams()) {
        const QNetworkDatagram datagram = m_socket->receiveDatagram();
        // The kernel delivers a group that any program has joined, whatever interface it came in on.
        if (int(datagram.interfaceIndex()) != m_interfaceIndex)
            continue;
        if (const auto announcement = parseAnnouncement(datagram.data()))
            hear(*announcement, datagram.senderAddress());
    }
}

void DeviceFinder::hear(const Announcement &announcement, const QHostAddress &sender)
{
    KnownDevice *known = device(announcement.name);
    if (!known)
        addDevice(announcement, sender);
    else if (known->isPresent() && known->macAddress() != announcement.mac)
        reportClash(*known, sender);
    else
        known->hear(announcement, sender);
}

void DeviceFinder::addDevice(const Announcement &announcement, const QHostAddress &sender)
{
    auto *device = new KnownDevice(announcement.name, m_lostAfterMs, this);
    device->hear(announcement, sender);
    m_devices.append(device);
    m_list->add(device);
    emit found(device);
}

void DeviceFinder::reportClash(const KnownDevice &device, const QHostAddress &sender)
{
    const QString key = device.name() + QLatin1Char('@') + sender.toString();
    if (m_reportedClashes.contains(key))
        return;
    m_reportedClashes.insert(key);
    emit nameClash(tr("Two devices call themselves %1: %2 and %3. The second one is ignored; give it "
                      "another name.")
                       .arg(device.name(), device.ipAddress().toString(), sender.toString()));
}

} // namespace devhost
