#pragma once

#include <QHostAddress>
#include <QJsonValue>
#include <QProcess>

namespace proof {

/// A simulated device in a process of its own.
class DeviceProcess
{
public:
    /// @p number, from 1, gives it name, address and port of its own.
    explicit DeviceProcess(int number);
    ~DeviceProcess();

    /// False when it does not listen within ten seconds.
    bool start(const QStringList &options);

    QString name() const { return m_name; }
    QHostAddress address() const { return m_address; }
    quint16 port() const { return m_port; }

    /// What the device itself answers to a get, asked past every editor; undefined when it is silent.
    QJsonValue ask(const QString &path) const;
    /// Sets something as another controller does, past every editor.
    void set(const QString &path, const QString &text) const;
    /// Whether it answers; it does not while it restarts.
    bool isUp() const { return ask(QStringLiteral("/info"), 1).isObject(); }

private:
    QJsonValue ask(const QString &path, int attempts) const;
    QJsonValue exchange(const QByteArray &request, int attempts) const;

    QString m_name;
    QHostAddress m_address;
    quint16 m_port;
    QProcess m_process;
};

} // namespace proof
