#include "host/px_devices.h"

#include "host/px_device.h"

pxDevices::pxDevices(QObject *parent)
    : QObject(parent)
{
}

void pxDevices::add(pxDevice *device)
{
    if (!device || m_devices.contains(device))
        return;
    m_devices.append(device);
    connect(device, &QObject::destroyed, this, [this, device] { remove(device); });
    emit DevicesChanged();
}

void pxDevices::remove(pxDevice *device)
{
    if (!m_devices.removeOne(device))
        return;
    disconnect(device, &QObject::destroyed, this, nullptr);
    emit DevicesChanged();
}

void pxDevices::setThreshold(const QString &key, uint level)
{
    m_thresholds.insert(key, level);
}

uint pxDevices::threshold(const QString &key) const
{
    return m_thresholds.value(key, 0);
}
