#pragma once

#include <QJsonValue>
#include <QString>

namespace sim {

/// What became of a request: the value that the reply carries, or the words that say why it was refused.
struct Outcome
{
    QJsonValue value;
    QString refusal; ///< empty when the request was carried out

    bool accepted() const { return refusal.isEmpty(); }

    static Outcome accept(const QJsonValue &value) { return {value, {}}; }

    /// A refusal names the node first, so that a log line makes sense alone: "/system/usb/mode: ...".
    static Outcome refuse(const QString &path, const QString &reason)
    {
        return {{}, path + QStringLiteral(": ") + reason};
    }
};

} // namespace sim
