#pragma once

#include <QHostAddress>
#include <QJsonObject>
#include <QString>

namespace sim {

/// Who a simulated device says it is: all of it follows from its name and address, so that a device started
/// again is the same device, and two of one name are not.
class Identity
{
public:
    explicit Identity(const QString &name, const QHostAddress &address = {});

    QString name() const { return m_name; }

    /// A locally administered MAC address; "KBX-0001" on 127.0.0.11 has "02:4B:42:0B:00:01".
    QString macAddress() const;

    QString version() const { return QStringLiteral("1.2.0"); }

    /// The content of "/info".
    QJsonObject info() const;

    /// The announcement of a device whose control service listens on `controlPort`.
    QByteArray announcement(quint16 controlPort) const;

private:
    QString m_name;
    QHostAddress m_address;
};

} // namespace sim
