#include "devhost/known_device.h"

#include "devhost/announcement.h"

namespace devhost {

KnownDevice::KnownDevice(const QString &name, int lostAfterMs, QObject *parent)
    : pxDevice(parent)
{
    setName(name);
    m_silence.setSingleShot(true);
    m_silence.setInterval(lostAfterMs);
    connect(&m_silence, &QTimer::timeout, this, [this] {
        emit fellSilent();
        if (!m_silence.isActive())
            setPresent(false);
    });
}

void KnownDevice::hear(const Announcement &announcement, const QHostAddress &sender)
{
    const bool moved = ipAddress() != sender || m_controlPort != announcement.controlPort;
    m_model = announcement.model;
    m_controlPort = announcement.controlPort;
    setType(announcement.type);
    setIpAddress(sender);
    setMacAddress(announcement.mac);
    setProductName(announcement.product);
    setFirmwareVersion(announcement.version);
    setFeatureLevel(announcement.featureLevel);
    // One that was lost has no route.
    if (moved || !isPresent())
        emit routeChanged();
    m_silence.start();
    m_lastHeard.start();
    setPresent(true);
}

} // namespace devhost
