#pragma once

#include <QSet>
#include <QStringListModel>

namespace devhost {

struct LogEntry;

/// The paths of the device guide and those seen in messages, in the order of the alphabet, for completion
/// while typing. Members of what a device replied count as paths below it.
class SeenPaths : public QStringListModel
{
    Q_OBJECT

public:
    using QStringListModel::QStringListModel;

    /// Adds the paths that stand in the tables of @p guide (docs/device-guide.md), and those above them.
    void learn(const QString &guide);
    void note(const LogEntry &entry);

private:
    void add(const QString &path);

    QSet<QString> m_paths;
    QSet<QString> m_opened; ///< those whose members were looked at
};

} // namespace devhost
