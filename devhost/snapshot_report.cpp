#include "devhost/snapshot_report.h"

#include "devhost/editor_session.h"
#include "devhost/refusals.h"
#include "devhost/snapshot_changes.h"

namespace devhost {

namespace {

constexpr int LookMs = 200;
constexpr int MostNamed = 3; // in one sentence

QString listed(const QStringList &entries)
{
    const QString list = entries.mid(0, MostNamed).join(QStringLiteral("; "));
    return entries.size() > MostNamed
        ? SnapshotReport::tr("%1 and %2 more").arg(list).arg(entries.size() - MostNamed)
        : list;
}

} // namespace

SnapshotReport::SnapshotReport(EditorSession *session, const RequestWatch *requests,
                               const QByteArray &snapshot)
    : QObject(session)
    , m_session(session)
    , m_requests(requests)
    , m_lostAtStart(requests->figures(session->deviceName()).lost)
    , m_entries(snapshotPaths(snapshot))
{
    connect(requests, &RequestWatch::refused, this, [this](const Refusal &refusal) {
        if (refusal.device == m_session->deviceName() && refusal.request.command == QLatin1String("set"))
            m_refused.append(
                QStringLiteral("%1 (%2)").arg(shortened(refusal.request.path), reasonOf(refusal)));
    });
    connect(session, &EditorSession::sentText, this, [this](const QByteArray &message) {
        const RequestText request = readRequest(message);
        if (request.command == QLatin1String("set"))
            m_sent.insert(request.path);
    });
    connect(session, &EditorSession::ended, this, [this] {
        emit finished(tr("The editor of %1 was closed before the whole snapshot was sent.")
                          .arg(m_session->deviceName()),
                      true);
    });
    connect(&m_looking, &QTimer::timeout, this, &SnapshotReport::look);
    m_looking.start(LookMs);
}

void SnapshotReport::look()
{
    if (m_session->waitingRequests() > 0 || m_requests->figures(m_session->deviceName()).waiting > 0)
        return;
    m_looking.stop();
    report();
    deleteLater();
}

void SnapshotReport::report()
{
    QStringList skipped;
    for (const QString &path : qAsConst(m_entries)) {
        if (!m_sent.contains(path))
            skipped.append(shortened(path));
    }
    const QString name = m_session->deviceName();
    QString sentence;
    if (!m_refused.isEmpty())
        sentence = tr("%1 refused %2 of the snapshot's entries: %3.")
                       .arg(name)
                       .arg(m_refused.size())
                       .arg(listed(m_refused));
    if (!skipped.isEmpty())
        sentence += tr(" Skipped, because they are no settings of this device: %1.").arg(listed(skipped));
    const int lost = m_requests->figures(name).lost - m_lostAtStart;
    if (lost > 0)
        sentence += tr(" %1 got no answer: load the snapshot again.").arg(lost);
    const bool isProblem = !sentence.isEmpty();
    emit finished(isProblem ? sentence.trimmed() : tr("%1 has taken every entry of the snapshot.").arg(name),
                  isProblem);
}

} // namespace devhost
