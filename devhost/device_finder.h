#pragma once

#include <QList>
#include <QNetworkInterface>
#include <QObject>
#include <QScopedPointer>
#include <QSet>

class QUdpSocket;
class pxDevices;

namespace devhost {

struct Announcement;
class KnownDevice;

/// Listens for announcements on one network interface and keeps the list of known devices. It owns the
/// devices and keeps those that fell silent, marked as lost, so that an open editor's device never dangles.
class DeviceFinder : public QObject
{
    Q_OBJECT

public:
    /// A device is lost @p lostAfterMs after its last announcement. @p devices is the list that plugins see.
    DeviceFinder(pxDevices *devices, int lostAfterMs, QObject *parent = nullptr);
    ~DeviceFinder() override;

    /// Listens on @p interface instead of the earlier one. The answer is empty, or a sentence on what failed.
    QString listenOn(const QNetworkInterface &interface);

    const QList<KnownDevice *> &devices() const { return m_devices; }
    /// Null when no device has that name.
    KnownDevice *device(const QString &name) const;

signals:
    void found(KnownDevice *device);
    /// A second device uses the name of a present one; said once a name and address.
    void nameClash(const QString &sentence);

private:
    void readPending();
    void hear(const Announcement &announcement, const QHostAddress &sender);
    void addDevice(const Announcement &announcement, const QHostAddress &sender);
    void reportClash(const KnownDevice &device, const QHostAddress &sender);

    pxDevices *m_list;
    int m_lostAfterMs;
    int m_interfaceIndex = 0;
    QScopedPointer<QUdpSocket> m_socket;
    QList<KnownDevice *> m_devices;
    QSet<QString> m_reportedClashes;
};

} // namespace devhost
