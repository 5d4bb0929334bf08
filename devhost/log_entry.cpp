#include "devhost/log_entry.h"

#include "devhost/message_line.h"

#include <QCoreApplication>

#include <algorithm>

namespace devhost {

namespace {

// Laying out a line of a whole datagram takes longer than its row is on screen.
constexpr int MostShown = 300;

class Words
{
    Q_DECLARE_TR_FUNCTIONS(LogEntry)
};

const char *wordOf(LogSource source)
{
    constexpr const char *words[] = {"tx", "rx", "plugin", "host", "problem"};
    return words[int(source)];
}

QString beginningOf(const QString &text)
{
    return text.size() <= MostShown ? text : text.left(MostShown) + QStringLiteral(" ...");
}

QString summaryOf(const QByteArray &message, const RequestText &request)
{
    if (request.path.isEmpty())
        return beginningOf(readable(message, MostShown + 1));
    const QString words = request.command + QLatin1Char(' ') + request.path;
    return request.value.isUndefined() ? words
                                       : beginningOf(words + QLatin1Char(' ') + compact(request.value));
}

QString summaryOf(const QByteArray &bytes, const ReplyText &reply)
{
    if (reply.verdict == Verdict::Refused)
        return beginningOf(Words::tr("Refused: %1").arg(readable(reply.reason.toUtf8(), MostShown + 1)));
    if (reply.verdict == Verdict::Confirmed && !reply.value.isUndefined())
        return beginningOf(compact(reply.value));
    return beginningOf(readable(bytes, MostShown + 1));
}

Outcome outcomeOf(const RequestWatch::Answer &answer)
{
    if (answer.token < 0)
        return Outcome::Unasked;
    constexpr Outcome outcomes[] = {Outcome::Confirmed, Outcome::Refused, Outcome::Unreadable};
    return outcomes[int(answer.reply.verdict)];
}

QDateTime replyTimeOf(const LogEntry &entry)
{
    return entry.time.addMSecs(entry.source == LogSource::Sent ? qRound64(entry.replyMs) : 0);
}

QString line(const QDateTime &time, const QString &device, const char *word, const QByteArray &message)
{
    return QStringLiteral("%1\t%2\t%3\t%4\n")
        .arg(time.toString(Qt::ISODateWithMs), device, QLatin1String(word), readable(message));
}

LogEntry newEntry(LogSource source, const QString &device)
{
    LogEntry entry;
    entry.time = QDateTime::currentDateTime();
    entry.source = source;
    entry.device = device;
    return entry;
}

} // namespace

void LogEntry::setReply(const QByteArray &bytes, const RequestWatch::Answer &answer)
{
    reply = bytes;
    replySummary = summaryOf(bytes, answer.reply);
    outcome = outcomeOf(answer);
    isLate = answer.isLate;
    replyMs = answer.ms;
}

bool LogEntry::isProblem() const
{
    const bool isWell
        = outcome == Outcome::None || outcome == Outcome::Waiting || outcome == Outcome::Confirmed;
    return source == LogSource::Problem || isLate || !isWell;
}

bool LogEntry::isEcho() const
{
    return source == LogSource::Plugin
        && (message == "Command Request:" || message == "Command Response:" || message.startsWith("    "));
}

bool LogEntry::isPolling() const
{
    return source == LogSource::Sent && !isByHand
        && (message.startsWith("{\"get\":\"/status/") || message.contains("\"/control/req_metering\""));
}

LogEntry noteEntry(LogSource source, const QString &device, const QString &text)
{
    LogEntry entry = newEntry(source, device);
    entry.message = text.toUtf8();
    entry.summary = beginningOf(readable(entry.message, MostShown + 1));
    return entry;
}

LogEntry requestEntry(const QString &device, const QByteArray &message)
{
    LogEntry entry = newEntry(LogSource::Sent, device);
    entry.message = message;
    const RequestText request = readRequest(message);
    entry.path = request.path;
    entry.summary = summaryOf(message, request);
    entry.outcome = Outcome::Waiting;
    return entry;
}

LogEntry replyEntry(const QString &device, const QByteArray &bytes, const RequestWatch::Answer &answer)
{
    LogEntry entry = newEntry(LogSource::Received, device);
    entry.setReply(bytes, answer);
    return entry;
}

LogEntry binaryEntry(LogSource source, const QString &device, const QByteArray &bytes)
{
    LogEntry entry = newEntry(source, device);
    const bool isSent = source == LogSource::Sent;
    (isSent ? entry.message : entry.reply) = bytes;
    (isSent ? entry.summary : entry.replySummary) = beginningOf(QString::fromLatin1(bytes.toHex(' ')));
    entry.replyMs = isSent ? -1 : 0;
    return entry;
}

QString outcomeText(const LogEntry &entry)
{
    const QString time = milliseconds(entry.replyMs);
    switch (entry.outcome) {
    case Outcome::None:
        return QString();
    case Outcome::Waiting:
        return Words::tr("waits for its reply");
    case Outcome::Lost:
        return Words::tr("never answered");
    case Outcome::Unasked:
        return Words::tr("a reply that no request waits for");
    case Outcome::Refused:
        return Words::tr("refused after %1").arg(time);
    case Outcome::Unreadable:
        return Words::tr("answered after %1 with what is no reply").arg(time);
    default:
        return entry.isLate ? Words::tr("answered late, after %1").arg(time)
                            : Words::tr("answered after %1").arg(time);
    }
}

QString milliseconds(double ms)
{
    const int decimals = ms < 10 ? 2 : ms < 100 ? 1 : 0;
    return Words::tr("%1 ms").arg(ms, 0, 'f', decimals);
}

qint64 bytesOf(const LogEntry &entry)
{
    const int characters
        = entry.device.size() + entry.summary.size() + entry.path.size() + entry.replySummary.size();
    return qint64(sizeof(LogEntry)) + entry.message.size() + entry.reply.size()
        + qint64(sizeof(QChar)) * characters;
}

QString linesOf(const LogEntry &entry)
{
    QString lines;
    if (entry.source != LogSource::Received)
        lines += line(entry.time, entry.device, wordOf(entry.source), entry.message);
    if (entry.replyMs >= 0)
        lines += line(replyTimeOf(entry), entry.device, "rx", entry.reply);
    return lines;
}

QByteArray jsonLinesOf(const QVector<LogEntry> &entries)
{
    struct Message
    {
        QDateTime time;
        const char *direction;
        const LogEntry *entry;
        const QByteArray *bytes;
    };
    QVector<Message> messages;
    for (const LogEntry &entry : entries) {
        if (entry.source != LogSource::Received)
            messages.append({entry.time, wordOf(entry.source), &entry, &entry.message});
        if (entry.replyMs >= 0)
            messages.append({replyTimeOf(entry), "rx", &entry, &entry.reply});
    }
    std::stable_sort(messages.begin(), messages.end(),
                     [](const Message &one, const Message &other) { return one.time < other.time; });
    QByteArray lines;
    for (const Message &message : qAsConst(messages))
        lines += messageLine(messages.first().time.msecsTo(message.time), message.direction,
                             message.entry->device, *message.bytes);
    return lines;
}

} // namespace devhost
