#include "devhost/device_finder.h"

#include "devhost/announcement.h"
#include "devhost/known_device.h"
#include "host/px_devices.h"

#include <QDeadlineTimer>
#include <QNetworkDatagram>
#include <QUdpSocket>

namespace devhost {

namespace {

constexpr char AnnouncementGroup[] = "239.255.77.1";
constexpr quint16 AnnouncementPort = 47700;

// The longest that announcements keep other events waiting.
constexpr int TurnMs = 10;

constexpr int ReceiveBuffer = 1024 * 1024;

} // namespace

DeviceFinder::DeviceFinder(pxDevices *devices, const FinderLimits &limits, QObject *parent)
    : QObject(parent)
    , m_list(devices)
    , m_limits(limits)
{
    connect(&m_forgetting, &QTimer::timeout, this, &DeviceFinder::forgetLongLost);
    m_forgetting.start(limits.forgetAfterMs / 10);
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
    // As much as the system permits: a full one drops what known devices say.
    m_socket->setSocketOption(QAbstractSocket::ReceiveBufferSizeSocketOption, ReceiveBuffer);
    if (!m_socket->joinMulticastGroup(QHostAddress(QLatin1String(AnnouncementGroup)), interface)) {
        return tr("No device can be found on %1: joining the group %2 failed (%3). Choose another interface.")
            .arg(interface.humanReadableName(), QLatin1String(AnnouncementGroup), m_socket->errorString());
    }
    return QString();
}

void DeviceFinder::readPending()
{
    // What is still there then, the socket reports again.
    const QDeadlineTimer turn(TurnMs);
    while (!turn.hasExpired()) {
        const QNetworkDatagram datagram = m_socket->receiveDatagram(LongestAnnouncement + 1);
        if (!datagram.isValid())
            return;
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
    if (!known) {
        if (makeRoom()) // else it announces itself again in a second
            addDevice(announcement, sender);
        return;
    }
    if (known->isPresent() && known->macAddress() != announcement.mac)
        reportClash(*known, sender);
    else
        known->hear(announcement, sender);
}

bool DeviceFinder::isWithinPace()
{
    if (!m_second.isValid() || m_second.hasExpired(1000)) {
        m_second.start();
        m_newThisSecond = 0;
    }
    ++m_newThisSecond;
    if (m_newThisSecond == m_limits.mostNewASecond + 1)
        excuseSilence();
    return m_newThisSecond <= m_limits.mostNewASecond;
}

void DeviceFinder::excuseSilence()
{
    for (KnownDevice *device : qAsConst(m_devices)) {
        if (device->isPresent() && device->isHeld())
            device->excuseSilence();
    }
}

/// Answers whether there is room for a new device.
bool DeviceFinder::makeRoom()
{
    if (!isWithinPace())
        return false;
    if (m_devices.size() >= m_limits.mostDevices) {
        KnownDevice *spare = longestSilentSpare();
        if (!spare) {
            reportFull();
            return false;
        }
        forget(spare);
    }
    return true;
}

KnownDevice *DeviceFinder::longestSilentSpare() const
{
    KnownDevice *longest = nullptr;
    for (KnownDevice *device : m_devices) {
        if (device->isSpare() && (!longest || device->silentMs() > longest->silentMs()))
            longest = device;
    }
    return longest;
}

void DeviceFinder::forget(KnownDevice *device)
{
    m_devices.removeOne(device);
    m_byName.remove(device->name());
    m_reportedClashes.remove(device->name());
    m_reportedFull = false;
    m_list->remove(device);
    emit forgotten(device);
    device->deleteLater();
}

void DeviceFinder::forgetLongLost()
{
    for (KnownDevice *device : QList<KnownDevice *>(m_devices)) {
        if (device->isSpare() && device->silentMs() > m_limits.forgetAfterMs)
            forget(device);
    }
}

void DeviceFinder::addDevice(const Announcement &announcement, const QHostAddress &sender)
{
    auto *device = new KnownDevice(announcement.name, m_limits.lostAfterMs, this);
    // A host that was busy all the while has its announcements still to read.
    connect(device, &KnownDevice::fellSilent, this, &DeviceFinder::readPending);
    device->hear(announcement, sender);
    m_devices.append(device);
    m_byName.insert(device->name(), device);
    m_list->add(device);
    emit found(device);
}

void DeviceFinder::reportClash(const KnownDevice &device, const QHostAddress &sender)
{
    if (m_reportedClashes.contains(device.name()))
        return;
    m_reportedClashes.insert(device.name());
    emit problem(tr("Two devices call themselves %1: %2 and %3. The second one is ignored; give it "
                    "another name.")
                     .arg(device.name(), device.ipAddress().toString(), sender.toString()));
}

void DeviceFinder::reportFull()
{
    if (m_reportedFull)
        return;
    m_reportedFull = true;
    emit problem(tr("More than %1 devices announce themselves; those that are not listed cannot be opened. "
                    "Choose another interface, or find out who announces so many.")
                     .arg(m_limits.mostDevices));
}

} // namespace devhost
