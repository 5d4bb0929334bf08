#include "devhost/tour/device_probe.h"

#include "devhost/known_device.h"

#include <QJsonDocument>

namespace devhost::tour {

namespace {

constexpr int AgainMs = 1000;

QByteArray message(const char *command, const QString &path, const QJsonValue &value)
{
    QJsonObject object{{QLatin1String(command), path}};
    if (!value.isUndefined())
        object.insert(QStringLiteral("value"), value);
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

} // namespace

DeviceProbe::DeviceProbe(QObject *parent)
    : QObject(parent)
{
    m_open = m_transport.open().isEmpty();
    m_again.setInterval(AgainMs);
    connect(&m_again, &QTimer::timeout, this, &DeviceProbe::sendNext);
    connect(&m_transport, &DeviceTransport::received, this,
            [this](const QString &, const QByteArray &bytes) { hear(bytes); });
}

void DeviceProbe::aim(const KnownDevice &device)
{
    m_device = device.name();
    m_transport.setRoute(m_device, device.ipAddress(), device.controlPort());
    m_requests.clear();
}

void DeviceProbe::read(const KnownDevice &device, const QStringList &paths)
{
    aim(device);
    m_values.clear();
    for (const QString &path : paths)
        m_requests.insert(path, message("get", path, QJsonValue(QJsonValue::Undefined)));
    sendNext();
}

void DeviceProbe::write(const KnownDevice &device, const Values &values)
{
    aim(device);
    for (auto it = values.cbegin(); it != values.cend(); ++it)
        m_requests.insert(it.key(), message("set", it.key(), it.value()));
    sendNext();
}

void DeviceProbe::sendNext()
{
    m_again.stop();
    if (m_requests.isEmpty())
        return;
    m_transport.send(m_device, m_requests.first());
    m_again.start();
}

void DeviceProbe::hear(const QByteArray &bytes)
{
    const QJsonObject reply = QJsonDocument::fromJson(bytes).object();
    const QString path = reply.value(QLatin1String("param")).toString();
    if (reply.value(QLatin1String("result")) != QJsonValue(QStringLiteral("OK")) || !m_requests.remove(path))
        return;
    m_values.insert(path, reply.value(QLatin1String("value")));
    sendNext();
}

} // namespace devhost::tour
