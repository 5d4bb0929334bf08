#pragma once

#include "host/plexo_host_export.h"

#include <QHostAddress>
#include <QObject>
#include <QString>

/// One device that the host has found on the network. Owned by the host; a plugin only reads it.
///
/// A version number is major * 1000000 + minor * 1000 + patch, its text is "v1.2.3".
class PLEXO_HOST_EXPORT pxDevice : public QObject
{
    Q_OBJECT

public:
    /// How the device is reached; the host routes a message by name and type.
    enum e_dev_type { DEV_TYPE_UNKNOWN, DEV_TYPE_NETWORK };
    Q_ENUM(e_dev_type)

    explicit pxDevice(QObject *parent = nullptr);

    QString name() const { return m_name; }
    e_dev_type type() const { return m_type; }
    bool isPresent() const { return m_present; }
    QHostAddress ipAddress() const { return m_ipAddress; }
    QString macAddress() const { return m_macAddress; }
    QString productName() const { return m_productName; }
    uint firmwareVersion() const { return m_firmwareVersion; }
    /// The number that a feature threshold (pxDevices::threshold) is compared with.
    uint featureLevel() const { return m_featureLevel; }

    /// "v1.2.3" for 1002003.
    static QString versionToText(uint version);
    /// 1002003 for "1.2.3" (no leading "v"); 0 for any other text. Minor and patch go up to 999.
    static uint versionFromText(const QString &text);

    // For the host. Each emits DataChanged() when the value differs from the one held.
    void setName(const QString &name);
    void setType(e_dev_type type);
    void setIpAddress(const QHostAddress &address);
    void setMacAddress(const QString &mac);
    void setProductName(const QString &product);
    void setFirmwareVersion(uint version);
    void setFeatureLevel(uint level);

    /// For the host. On a change emits PresenceChanged(), and isAlive(name) when the device appears.
    void setPresent(bool present);

signals:
    void PresenceChanged();
    void DataChanged();
    void isAlive(QString name);

private:
    template <typename T>
    void store(T &field, const T &value);

    QString m_name;
    e_dev_type m_type = DEV_TYPE_UNKNOWN;
    bool m_present = false;
    QHostAddress m_ipAddress;
    QString m_macAddress;
    QString m_productName;
    uint m_firmwareVersion = 0;
    uint m_featureLevel = 0;
};

Q_DECLARE_METATYPE(pxDevice::e_dev_type)
