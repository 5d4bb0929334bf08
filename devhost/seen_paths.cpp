#include "devhost/seen_paths.h"

#include "devhost/log_entry.h"

#include <QJsonObject>
#include <QRegularExpression>

#include <algorithm>

namespace devhost {

namespace {

constexpr int MostPaths = 2000;
constexpr int LongestPath = 200;

/// "/a/0" and "/a/1" for "/a/0..1".
QStringList eachOf(const QString &path)
{
    static const QRegularExpression span(QStringLiteral("0\\.\\.(\\d+)"));
    const QRegularExpressionMatch found = span.match(path);
    if (!found.hasMatch())
        return {path};
    QStringList paths;
    for (int index = 0; index <= found.capturedRef(1).toInt(); ++index) {
        QString one = path;
        paths += eachOf(one.replace(found.capturedStart(), found.capturedLength(), QString::number(index)));
    }
    return paths;
}

} // namespace

void SeenPaths::learn(const QString &guide)
{
    static const QRegularExpression row(QStringLiteral("^\\| `(/[^`]+)` \\|"),
                                        QRegularExpression::MultilineOption);
    for (auto it = row.globalMatch(guide); it.hasNext();) {
        for (QString path : eachOf(it.next().captured(1))) {
            for (; !path.isEmpty(); path.truncate(path.lastIndexOf(QLatin1Char('/'))))
                m_paths.insert(path);
        }
    }
    QStringList paths = m_paths.values();
    paths.sort();
    setStringList(paths);
}

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
