#pragma once

#include <QJsonObject>
#include <QString>

namespace sim {

/// Who a simulated device says it is: all of it follows from its name, so that a device started again
/// under the same name is the same device.
class Identity
{
public:
    explicit Identity(const QString &name);

    QString name() const { return m_name; }

    /// A locally administered MAC address; "KBX-0001" has "02:4B:42:58:00:01".
    QString macAddress() const;

    QString version() const { return QStringLiteral("1.2.0"); }

    /// The content of "/info".
    QJsonObject info() const;

    /// The announcement of a device whose control service listens on `controlPort`.
    QByteArray announcement(quint16 controlPort) const;

private:
    QString m_name;
};

} // namespace sim
