#include "simulator/replay.h"

#include <QJsonDocument>

#include <algorithm>

namespace sim {

Replay::Replay(const Recording &recording, const Options &options, const Intervals &intervals,
               QObject *parent)
    : QObject(parent)
    , m_recording(recording)
    , m_orders(presenceOrders(), options.faults)
    , m_presence(options, intervals,
                 {[this](const QByteArray &text) { return answer(text); },
                  [this](quint16 port) { return announcement(port); }, [this] { return m_levels; }})
{
    for (int i = 0; i < m_recording.requests.size(); ++i) {
        const RecordedRequest &recorded = m_recording.requests.at(i);
        Occurrences &occurrences = m_occurrences[recorded.text];
        occurrences.requests << i;
        if (recorded.replies.isEmpty())
            continue;
        occurrences.lastAnswered = i;
        const Request request = parseRequest(recorded.text);
        if (request.kind == Request::Kind::Get)
            m_lastReplies.insert(request.path, recorded.replies.first().bytes);
    }
    m_levelTimer.setSingleShot(true);
    m_levelTimer.setTimerType(Qt::PreciseTimer);
    connect(&m_levelTimer, &QTimer::timeout, this, &Replay::sendLevels);
    connect(&m_orders, &Orders::changed, this, &Replay::applyOrder);
    connect(&m_presence, &Presence::changed, this, [this](bool here) {
        m_orders.tell(QStringLiteral("/present"), here);
        if (!here)
            m_levelTimer.stop();
    });
    applyOrder(QStringLiteral("/faults"), m_orders.value(QStringLiteral("/faults")));
}

QString Replay::start()
{
    QString problem = m_presence.open();
    if (problem.isEmpty())
        m_presence.appear();
    return problem;
}

QVector<Answer> Replay::answer(const QByteArray &text)
{
    const Request request = parseRequest(text);
    if (isRefused(m_refuse, request))
        return {{replyBytes(request, refusedOnRequest(m_refuse, request))}};
    const RecordedRequest *recorded = next(text);
    if (!recorded)
        return {{unrecorded(request)}};
    follow(request, *recorded);
    QVector<Answer> answers;
    for (const RecordedReply &reply : recorded->replies)
        answers.append({reply.bytes, reply.afterMs});
    return answers;
}

/// The next of that text that has not been used; when all have, the last one that had a reply. Null for none.
const RecordedRequest *Replay::next(const QByteArray &text)
{
    const auto found = m_occurrences.find(text);
    if (found == m_occurrences.end())
        return nullptr;
    const bool isFresh = found->used < found->requests.size();
    const int index = isFresh ? found->requests.at(found->used++) : found->lastAnswered;
    return index < 0 ? nullptr : &m_recording.requests.at(index);
}

QByteArray Replay::unrecorded(const Request &request) const
{
    if (request.kind == Request::Kind::Text)
        return "NACK\r";
    if (request.kind == Request::Kind::Bad)
        return replyBytes(request, {{}, request.text});
    if (request.kind == Request::Kind::Get && m_lastReplies.contains(request.path))
        return m_lastReplies.value(request.path);
    return replyBytes(request, Outcome::refuse(request.path, QStringLiteral("not in the recording")));
}

/// Does what the recorded device did besides answering.
void Replay::follow(const Request &request, const RecordedRequest &recorded)
{
    for (const RecordedReply &reply : recorded.replies)
        followTarget(reply.bytes);
    if (request.kind != Request::Kind::Set || request.path != QLatin1String("/control/req_metering"))
        return;
    if (request.value.toInt() > 0)
        playLevels(recorded.atMs);
    else
        m_levelTimer.stop();
}

/// Levels go where the recorded device last said that they go.
void Replay::followTarget(const QByteArray &reply)
{
    if (!reply.contains("/system/metering"))
        return;
    const QJsonObject target
        = QJsonDocument::fromJson(reply).object().value(QStringLiteral("value")).toObject();
    const QHostAddress group(target.value(QStringLiteral("ip")).toString());
    if (group.isMulticast())
        m_levels.group = group;
    m_levels.port = quint16(target.value(QStringLiteral("port")).toInt(m_levels.port));
}

/// From the recorded time on, unless they are being played.
void Replay::playLevels(qint64 fromMs)
{
    if (m_levelTimer.isActive())
        return;
    const QVector<RecordedLevels> &levels = m_recording.levels;
    const auto first
        = std::lower_bound(levels.begin(), levels.end(), fromMs,
                           [](const RecordedLevels &entry, qint64 atMs) { return entry.atMs < atMs; });
    m_nextLevels = int(first - levels.begin());
    m_levelsFromMs = fromMs;
    m_levelClock.start();
    waitForLevels();
}

void Replay::waitForLevels()
{
    if (m_nextLevels >= m_recording.levels.size())
        return;
    const qint64 due = m_recording.levels.at(m_nextLevels).atMs - m_levelsFromMs - m_levelClock.elapsed();
    m_levelTimer.start(int(qBound(qint64(0), due, qint64(3600000))));
}

void Replay::sendLevels()
{
    m_levels.payload = m_recording.levels.at(m_nextLevels++).payload;
    m_presence.sendLevels();
    waitForLevels();
}

void Replay::applyOrder(const QString &path, const QJsonValue &order)
{
    const FaultSettings faults = faultSettings(m_orders.value(QStringLiteral("/faults")).toObject());
    m_refuse = faults.refuse;
    m_presence.applyOrder(path, order, faults);
}

QByteArray Replay::announcement(quint16 controlPort) const
{
    const QJsonObject &device = m_recording.device;
    QJsonObject announcement{{QStringLiteral("announce"), QStringLiteral("plexo")},
                             {QStringLiteral("name"), device.value(QStringLiteral("device"))},
                             {QStringLiteral("control_port"), controlPort}};
    for (const QString &member :
         {QStringLiteral("type"), QStringLiteral("product"), QStringLiteral("model"), QStringLiteral("mac"),
          QStringLiteral("version"), QStringLiteral("feature_level")})
        announcement.insert(member, device.value(member));
    return QJsonDocument(announcement).toJson(QJsonDocument::Compact);
}

} // namespace sim
