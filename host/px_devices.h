#pragma once

#include "host/plexo_host_export.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QString>

class pxDevice;

/// The host's list of devices and its table of feature thresholds. Owned by the host; it does not own the
/// devices, and forgets one by itself when it is destroyed.
class PLEXO_HOST_EXPORT pxDevices : public QObject
{
    Q_OBJECT

public:
    explicit pxDevices(QObject *parent = nullptr);

    /// Adding a device that is already in the list, or null, changes nothing.
    void add(pxDevice *device);
    void remove(pxDevice *device);
    QList<pxDevice *> list() const { return m_devices; }

    void setThreshold(const QString &key, uint level);
    /// The lowest pxDevice::featureLevel() that has the feature; 0 for an unknown key.
    uint threshold(const QString &key) const;

signals:
    void DevicesChanged();

private:
    QList<pxDevice *> m_devices;
    QHash<QString, uint> m_thresholds;
};
