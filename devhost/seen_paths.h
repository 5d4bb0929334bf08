#pragma once

#include <QSet>
#include <QStringListModel>

namespace devhost {

struct LogEntry;

/// The paths that were seen in messages, in the order of the alphabet, for completion while typing. Members
/// of what a device replied count as paths below it.
class SeenPaths : public QStringListModel
{
    Q_OBJECT

public:
    using QStringListModel::QStringListModel;

    void note(const LogEntry &entry);

private:
    void add(const QString &path);

    QSet<QString> m_paths;
    QSet<QString> m_opened; ///< those whose members were looked at
};

} // namespace devhost
