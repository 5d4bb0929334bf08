#include "devhost/seen_paths.h"

#include "devhost/log_entry.h"

#include <QJsonObject>

#include <algorithm>

namespace devhost {

namespace {

constexpr int MostPaths = 2000;
constexpr int LongestPath = 200;

} // namespace

void SeenPaths::note(const LogEntry &entry)
{
    if (entry.path.isEmpty())
        return;
    add(entry.path);
    if (entry.outcome != Outcome::Confirmed || m_opened.contains(entry.path) || m_opened.size() >= MostPaths)
        return;
    m_opened.insert(entry.path);
    for (const QString &member : readReply(entry.reply).value.toObject().keys())
        add(entry.path + QLatin1Char('/') + member);
}

void SeenPaths::add(const QString &path)
{
    if (m_paths.contains(path) || m_paths.size() >= MostPaths || path.size() > LongestPath)
        return;
    m_paths.insert(path);
    const QStringList paths = stringList();
    const int row = int(std::lower_bound(paths.cbegin(), paths.cend(), path) - paths.cbegin());
    insertRow(row);
    setData(index(row), path);
}

} // namespace devhost
