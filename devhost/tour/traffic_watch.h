#pragma once

#include <QJsonObject>
#include <QObject>
#include <QVector>

namespace devhost {
class DeviceTransport;
}

namespace devhost::tour {

/// Listens to the messages between editor and device, and answers what the device has confirmed since the
/// tour last forgot what it heard.
class TrafficWatch : public QObject
{
    Q_OBJECT

public:
    explicit TrafficWatch(const DeviceTransport *transport, QObject *parent = nullptr);

    void forget();

    /// How many "OK" replies came to @p command ("get" or "set") of @p path; an empty one: of any path.
    int count(const QString &command, const QString &path = QString()) const;
    /// The value in the last such reply; undefined when there is none.
    QJsonValue value(const QString &command, const QString &path) const;

private:
    void hear(const QByteArray &message);

    QVector<QJsonObject> m_confirmed;
};

} // namespace devhost::tour
