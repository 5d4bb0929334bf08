#pragma once

#include <QElapsedTimer>
#include <QHash>
#include <QList>
#include <QNetworkInterface>
#include <QObject>
#include <QScopedPointer>
#include <QSet>
#include <QTimer>

class QUdpSocket;
class pxDevices;

namespace devhost {

struct Announcement;
class KnownDevice;

/// Anybody can announce any number of devices. In ms since the last announcement and in devices.
struct FinderLimits
{
    int lostAfterMs = 3000;
    int forgetAfterMs = 10 * 60 * 1000; ///< unless it is held
    int mostDevices = 500;
    int mostNewASecond = 100;
};

/// Listens for announcements on one network interface and keeps the list of known devices. It owns the
/// devices. Those that fell silent stay for a while, marked as lost; of these the longest silent one makes
/// room for a new one where the list is full. A device that is present or held is never forgotten, and a held
/// one is not lost while more new ones announce themselves than may: its own announcements may drown then.
class DeviceFinder : public QObject
{
    Q_OBJECT

public:
    /// @p devices is the list that plugins see.
    explicit DeviceFinder(pxDevices *devices, const FinderLimits &limits = {}, QObject *parent = nullptr);
    ~DeviceFinder() override;

    /// Listens on @p interface instead of the earlier one. The answer is empty, or a sentence on what failed.
    QString listenOn(const QNetworkInterface &interface);

    const QList<KnownDevice *> &devices() const { return m_devices; }
    /// Null when no device has that name.
    KnownDevice *device(const QString &name) const { return m_byName.value(name); }

signals:
    void found(KnownDevice *device);
    /// It is no longer listed; it is destroyed when control returns to the event loop.
    void forgotten(KnownDevice *device);
    /// A sentence for the user: a second device uses the name of a present one (said once a name), or the
    /// list is full (said once until there was room again).
    void problem(const QString &sentence);

private:
    void readPending();
    void hear(const Announcement &announcement, const QHostAddress &sender);
    bool makeRoom();
    bool isWithinPace();
    void excuseSilence();
    KnownDevice *longestSilentSpare() const;
    void forget(KnownDevice *device);
    void forgetLongLost();
    void addDevice(const Announcement &announcement, const QHostAddress &sender);
    void reportClash(const KnownDevice &device, const QHostAddress &sender);
    void reportFull();

    pxDevices *m_list;
    FinderLimits m_limits;
    int m_interfaceIndex = 0;
    QScopedPointer<QUdpSocket> m_socket;
    QList<KnownDevice *> m_devices;
    QHash<QString, KnownDevice *> m_byName;
    QSet<QString> m_reportedClashes;
    bool m_reportedFull = false;
    QTimer m_forgetting;
    QElapsedTimer m_second;
    int m_newThisSecond = 0;
};

} // namespace devhost
