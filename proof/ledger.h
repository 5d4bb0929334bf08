#pragma once

#include <QByteArray>
#include <QHash>
#include <QJsonValue>
#include <QString>
#include <QStringList>

namespace proof {

/// Compares what the user did to what left the editor: for each path the same values in the same order, none
/// lost and none doubled. Paths for which the user's acts are not expected beforehand do not count.
class Ledger
{
public:
    /// The user has just changed something that is to be sent as @p value to @p path. A path that is sent
    /// otherwise, too, is passed over.
    void expect(const QString &path, const QJsonValue &value);
    /// The editor has just handed @p request to its host.
    void note(const QByteArray &request);
    /// The device itself has answered: it should have no reason to refuse what an editor lets its user
    /// choose.
    void noteAnswer(const QByteArray &answer);
    /// Something else that is not as the user expects.
    void complain(const QString &problem) { m_problems.append(problem); }
    QByteArray last() const { return m_last; }
    /// What was sent to @p path last; undefined when nothing was.
    QJsonValue lastSent(const QString &path) const
    {
        return m_lastSent.value(path, QJsonValue(QJsonValue::Undefined));
    }
    /// A request is overdue. Once for each the user may have repeated what was sent last: that request, or
    /// the next one when the answer came while the user was asked.
    void noteTimeout() { ++m_mayRepeat; }
    /// What the user did and is not sent yet need not be: the editor is gone, or has dropped it knowingly.
    void forgive();

    /// Whether all that is expected has been sent.
    bool isSettled() const;
    /// What did not match so far, and what is still to come.
    QStringList problems() const;
    int matched() const { return m_matched; }

private:
    void record(const QString &path, const char *what, const QJsonValue &value);
    QString history(const QString &path) const;

    QHash<QString, QList<QJsonValue>> m_due;
    QHash<QString, QList<QJsonValue>> m_forgiven;
    QHash<QString, QStringList> m_history; ///< the last entries of each path
    QHash<QString, QJsonValue> m_lastSent;
    QStringList m_problems;
    QByteArray m_last;
    int m_matched = 0;
    int m_mayRepeat = 0;
};

} // namespace proof
