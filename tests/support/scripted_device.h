#pragma once

#include "host/plexo_plugin.h"

#include <QHash>
#include <QJsonValue>
#include <QObject>
#include <QSet>
#include <QStringList>

namespace support {

/// A device behind the host's signals: holds a small parameter tree, answers gets and sets from the event
/// loop, and keeps what it was sent.
class ScriptedDevice : public QObject
{
    Q_OBJECT

public:
    explicit ScriptedDevice(PlexoPlugin *plugin);

    /// Everything sent so far, in order.
    const QStringList &sent() const { return m_sent; }
    /// Sent messages other than gets.
    QStringList commands() const;
    /// The paths of the gets among them.
    QStringList gets() const;
    void forget() { m_sent.clear(); }
    /// Whether every request that it took has been answered.
    bool isIdle() const { return m_unanswered == 0; }

    /// What the device answers to a get of @p path from now on.
    void setValue(const QString &path, const QJsonValue &value) { m_tree.insert(path, value); }
    QJsonValue value(const QString &path) const { return m_tree.value(path); }
    /// Requests whose path contains @p part are refused.
    void refuse(const QString &part) { m_refused.insert(part); }
    void acceptAll() { m_refused.clear(); }
    /// While silent it takes requests and answers none.
    void setSilent(bool silent) { m_silent = silent; }
    bool isSilent() const { return m_silent; }

    /// Hands the plugin a message as if the device had sent it.
    void deliver(const QByteArray &bytes);
    /// Delivers an "OK" reply.
    void deliverGet(const QString &path, const QJsonValue &value);
    void deliverSet(const QString &path, const QJsonValue &value);

private:
    void take(const QString &name, const QByteArray &bytes);
    QByteArray answer(const QByteArray &request);
    bool isRefused(const QString &path) const;

    QPointer<PlexoPlugin> m_plugin;
    QHash<QString, QJsonValue> m_tree;
    QSet<QString> m_refused;
    QStringList m_sent;
    int m_unanswered = 0;
    bool m_silent = false;
};

} // namespace support
