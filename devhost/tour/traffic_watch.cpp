#include "devhost/tour/traffic_watch.h"

#include "devhost/device_transport.h"

#include <QJsonDocument>

#include <algorithm>

namespace devhost::tour {

namespace {

QString member(const QJsonObject &reply, const char *name)
{
    return reply.value(QLatin1String(name)).toString();
}

bool answers(const QJsonObject &reply, const QString &command, const QString &path)
{
    return member(reply, "cmd") == command && (path.isEmpty() || member(reply, "param") == path);
}

} // namespace

TrafficWatch::TrafficWatch(const DeviceTransport *transport, QObject *parent)
    : QObject(parent)
{
    connect(transport, &DeviceTransport::received, this,
            [this](const QString &, const QByteArray &message) { hear(message); });
}

void TrafficWatch::forget()
{
    m_confirmed.clear();
}

void TrafficWatch::hear(const QByteArray &message)
{
    const QJsonObject reply = QJsonDocument::fromJson(message).object();
    if (member(reply, "result") == QLatin1String("OK"))
        m_confirmed.append(reply);
}

int TrafficWatch::count(const QString &command, const QString &path) const
{
    return int(std::count_if(m_confirmed.cbegin(), m_confirmed.cend(),
                             [&](const QJsonObject &reply) { return answers(reply, command, path); }));
}

QJsonValue TrafficWatch::value(const QString &command, const QString &path) const
{
    const auto last = std::find_if(m_confirmed.crbegin(), m_confirmed.crend(),
                                   [&](const QJsonObject &reply) { return answers(reply, command, path); });
    return last == m_confirmed.crend() ? QJsonValue(QJsonValue::Undefined)
                                       : last->value(QLatin1String("value"));
}

} // namespace devhost::tour
