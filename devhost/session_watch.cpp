#include "devhost/session_watch.h"

#include "devhost/editor_session.h"
#include "devhost/refusals.h"

namespace devhost {

namespace {

constexpr int LookMs = 200;
constexpr int SlowMs = 300; // from which on it is worth telling that a reply is awaited

} // namespace

SessionWatch::SessionWatch(EditorSession *session, const RequestWatch *requests, int inGoodTimeMs)
    : QObject(session)
    , m_session(session)
    , m_requests(requests)
    , m_inGoodTimeMs(inGoodTimeMs)
    , m_atStart(requests->figures(session->deviceName()))
{
    m_sinceStart.start();
    connect(requests, &RequestWatch::refused, this, &SessionWatch::noteRefusal);
    connect(session, &EditorSession::receivedText, this, &SessionWatch::noteReply);
    connect(&m_looking, &QTimer::timeout, this, &SessionWatch::look);
    m_looking.start(LookMs);
}

void SessionWatch::noteRefusal(const Refusal &refusal)
{
    if (refusal.device != m_session->deviceName() || refusal.request.command != QLatin1String("get"))
        return;
    m_refusedPath = refusal.request.path;
    m_refusal = tr("refused to %1 (%2)").arg(wordsFor(refusal.request), reasonOf(refusal));
}

void SessionWatch::noteReply(const QByteArray &message)
{
    if (m_refusal.isEmpty())
        return;
    const ReplyText reply = readReply(message);
    if (reply.verdict == Verdict::Confirmed && reply.command == QLatin1String("get")
        && reply.path == m_refusedPath)
        m_refusal.clear();
}

void SessionWatch::look()
{
    m_session->setHint(waitingText());
    if (m_state != State::Live)
        lookForLife();
}

void SessionWatch::lookForLife()
{
    const DeviceFigures now = m_requests->figures(m_session->deviceName());
    const bool asked = now.answered > m_atStart.answered;
    const bool whole = m_refusal.isEmpty() && now.unreadable == m_atStart.unreadable;
    m_quietLooks = m_session->waitingRequests() == 0 && asked ? m_quietLooks + 1 : 0;
    // Between two requests of one reading nothing may wait for a moment.
    if (m_quietLooks >= 2 && whole) {
        const bool wasStuck = m_state == State::Stuck;
        m_state = State::Live;
        if (wasStuck)
            emit recovered();
    } else if (m_state == State::Starting && m_sinceStart.elapsed() >= m_inGoodTimeMs) {
        m_state = State::Stuck;
        emit stuck(reasonForStuck());
    }
}

QString SessionWatch::reasonForStuck() const
{
    const QString name = m_session->deviceName();
    if (!m_refusal.isEmpty())
        return tr("The editor of %1 is not complete: the device %2. Check that its firmware and the plugin "
                  "fit each "
                  "other.")
            .arg(name, m_refusal);
    const WaitingRequest waiting = m_requests->longestWaiting(name);
    const DeviceFigures now = m_requests->figures(name);
    if (!waiting.request.command.isEmpty() && now.answered == m_atStart.answered)
        return tr("%1 announces itself and answers nothing: the editor waits for it to %2. Check that no "
                  "firewall "
                  "stands between, and that the device is not busy starting.")
            .arg(name, wordsFor(waiting.request));
    if (now.unreadable > m_atStart.unreadable)
        return tr("The editor of %1 is not complete: %2 of the device's replies could not be read. Look for "
                  "them in "
                  "the log.")
            .arg(name)
            .arg(now.unreadable - m_atStart.unreadable);
    if (!waiting.request.command.isEmpty())
        return tr("%1 answers slowly: after %2 s the editor still waits for it to %3%4. Check the network "
                  "between.")
            .arg(name)
            .arg(m_sinceStart.elapsed() / 1000)
            .arg(wordsFor(waiting.request), othersText());
    return tr("The editor of %1 has not read the device after %2 s. Press Refresh in it; look into the log "
              "when that "
              "does not help.")
        .arg(name)
        .arg(m_sinceStart.elapsed() / 1000);
}

QString SessionWatch::othersText() const
{
    const int others = m_session->waitingRequests() - 1;
    return others > 0 ? tr(", and has %1 more requests").arg(others) : QString();
}

QString SessionWatch::waitingText() const
{
    const WaitingRequest longest = m_requests->longestWaiting(m_session->deviceName());
    if (longest.request.command.isEmpty() || longest.ms < SlowMs)
        return QString();
    const int count = qMax(1, m_session->waitingRequests());
    return count == 1 ? tr("1 request waits") : tr("%1 requests wait").arg(count);
}

} // namespace devhost
