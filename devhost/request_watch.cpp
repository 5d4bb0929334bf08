#include "devhost/request_watch.h"

#include <algorithm>
#include <utility>

namespace devhost {

namespace {

constexpr int TellingMs = 100;

} // namespace

void DeviceFigures::add(const DeviceFigures &other)
{
    requests += other.requests;
    waiting += other.waiting;
    answered += other.answered;
    refused += other.refused;
    unreadable += other.unreadable;
    late += other.late;
    lost += other.lost;
    totalMs += other.totalMs;
    worstMs = std::max(worstMs, other.worstMs);
}

RequestWatch::RequestWatch(const RequestLimits &limits, QObject *parent)
    : QObject(parent)
    , m_limits(limits)
{
    m_telling.setSingleShot(true);
    m_telling.setInterval(TellingMs);
    connect(&m_telling, &QTimer::timeout, this, [this] {
        const QSet<QString> changed = std::exchange(m_changed, {});
        for (const QString &name : changed)
            emit figuresChanged(name);
    });
    m_losing.setInterval(m_limits.lostMs / 20);
    connect(&m_losing, &QTimer::timeout, this, &RequestWatch::loseOld);
}

void RequestWatch::noteSent(const QString &name, const QByteArray &message, qint64 token,
                            qint64 sinceSendingNs)
{
    Device &device = m_devices[name];
    const auto repeated = std::find_if(device.open.cbegin(), device.open.cend(), [&](const Open &earlier) {
        return earlier.message == message && earlier.since.elapsed() >= m_limits.givenUpMs;
    });
    int givenUp = device.open.size() == m_limits.mostWaiting ? 0 : -1;
    if (repeated != device.open.cend())
        givenUp = int(repeated - device.open.cbegin());
    Open request{message, readRequest(message), token, sinceSendingNs, {}};
    request.since.start();
    device.open.append(request);
    ++device.figures.requests;
    if (!m_losing.isActive()) // a restart would put it off for as long as requests are sent
        m_losing.start();
    noteChange(name);
    if (givenUp >= 0)
        lose(name, givenUp);
}

RequestWatch::Answer RequestWatch::noteReceived(const QString &name, const QByteArray &message,
                                                qint64 sinceArrivalNs)
{
    Answer answer;
    answer.reply = readReply(message);
    const auto device = m_devices.find(name);
    if (device == m_devices.end())
        return answer;
    const auto asked
        = std::find_if(device->open.begin(), device->open.end(), [&answer](const Open &candidate) {
              return answer.reply.path.isEmpty()
                  || (answer.reply.command == candidate.request.command
                      && answer.reply.path == candidate.request.path);
          });
    if (asked == device->open.end())
        return answer;
    answer.token = asked->token;
    const qint64 ns = asked->earlierNs + asked->since.nsecsElapsed() - sinceArrivalNs;
    answer.ms = double(std::max(qint64(0), ns)) / 1e6;
    answer.isLate = answer.ms > m_limits.lateMs;
    const RequestText request = asked->request;
    device->open.erase(asked);
    count(&*device, answer);
    noteChange(name);
    if (answer.reply.verdict == Verdict::Refused)
        emit refused({name, request, answer.reply.reason});
    return answer;
}

void RequestWatch::count(Device *device, const Answer &answer)
{
    DeviceFigures &figures = device->figures;
    ++figures.answered;
    figures.refused += answer.reply.verdict == Verdict::Refused ? 1 : 0;
    figures.unreadable += answer.reply.verdict == Verdict::Unreadable ? 1 : 0;
    figures.late += answer.isLate ? 1 : 0;
    figures.totalMs += answer.ms;
    figures.worstMs = std::max(figures.worstMs, answer.ms);
}

void RequestWatch::lose(const QString &name, int index)
{
    Device &device = m_devices[name];
    const qint64 token = device.open.takeAt(index).token;
    ++device.figures.lost;
    noteChange(name);
    emit lost(token);
}

void RequestWatch::loseOld()
{
    bool anyWaits = false;
    for (const QString &name : m_devices.keys()) {
        while (longestWaiting(name).ms >= m_limits.lostMs)
            lose(name, 0);
        anyWaits |= figures(name).waiting > 0;
    }
    if (!anyWaits)
        m_losing.stop();
}

void RequestWatch::noteChange(const QString &name)
{
    m_changed.insert(name);
    if (!m_telling.isActive())
        m_telling.start();
}

void RequestWatch::forget(const QString &name)
{
    m_devices.remove(name);
}

DeviceFigures RequestWatch::figures(const QString &name) const
{
    const Device device = m_devices.value(name);
    DeviceFigures figures = device.figures;
    figures.waiting = device.open.size();
    return figures;
}

DeviceFigures RequestWatch::figuresOfAll() const
{
    DeviceFigures all;
    for (const QString &name : m_devices.keys())
        all.add(figures(name));
    return all;
}

WaitingRequest RequestWatch::longestWaiting(const QString &name) const
{
    const Device device = m_devices.value(name);
    if (device.open.isEmpty())
        return {};
    return {device.open.first().request, device.open.first().since.elapsed()};
}

} // namespace devhost
