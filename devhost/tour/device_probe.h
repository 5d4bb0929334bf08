#pragma once

#include "devhost/device_transport.h"

#include <QJsonObject>
#include <QMap>
#include <QTimer>

namespace devhost {
class KnownDevice;
}

namespace devhost::tour {

/// Asks the device itself, past host and editor, through a socket of its own: what the editor shows is no
/// proof of what the device holds.
class DeviceProbe : public QObject
{
    Q_OBJECT

public:
    using Values = QMap<QString, QJsonValue>;

    explicit DeviceProbe(QObject *parent = nullptr);

    /// Reads @p paths of @p device; isDone() once all have been answered. A lost message is sent again.
    void read(const KnownDevice &device, const QStringList &paths);
    /// Sets values by path; isDone() once the device has said "OK" to each.
    void write(const KnownDevice &device, const Values &values);

    bool isDone() const { return m_open && m_requests.isEmpty(); }
    /// What the last read() found, by path.
    const Values &values() const { return m_values; }

private:
    void aim(const KnownDevice &device);
    void sendNext();
    void hear(const QByteArray &message);

    DeviceTransport m_transport;
    QTimer m_again;
    bool m_open = false;
    QString m_device;
    QMap<QString, QByteArray> m_requests; ///< by path, those not answered yet
    Values m_values;
};

} // namespace devhost::tour
