#pragma once

#include "devhost/request_watch.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>

namespace devhost {

/// Where a line of the communication log comes from.
enum class LogSource { Sent, Received, Plugin, Host, Problem };

/// What became of a request; None for everything else.
enum class Outcome { None, Waiting, Confirmed, Refused, Unreadable, Lost, Unasked };

/// One line of the communication log: a note, a request with its reply, or a reply that belongs to no
/// request.
struct LogEntry
{
    QDateTime time;
    LogSource source = LogSource::Host;
    QString device; ///< empty for what concerns no device
    QByteArray message; ///< a request's bytes, or a note in UTF-8; empty for a reply alone
    QString summary; ///< the beginning of the message, in one line
    QString path; ///< that a request is about; empty where there is none
    bool isByHand = false; ///< sent by the user, not by an editor
    Outcome outcome = Outcome::None;
    bool isLate = false;
    double replyMs = -1; ///< how long the reply took; negative when there is none
    QByteArray reply; ///< a reply's bytes
    QString replySummary;

    void setReply(const QByteArray &bytes, const RequestWatch::Answer &answer);

    bool isNote() const { return source != LogSource::Sent && source != LogSource::Received; }
    bool isProblem() const;
    /// A plugin's own note of a message that the log has anyway.
    bool isEcho() const;
    /// A request that repeats itself while an editor is open.
    bool isPolling() const;
};

LogEntry noteEntry(LogSource source, const QString &device, const QString &text);
LogEntry requestEntry(const QString &device, const QByteArray &message);
/// A reply whose request the log does not have, or which nobody asked for.
LogEntry replyEntry(const QString &device, const QByteArray &bytes, const RequestWatch::Answer &answer);

/// A message of the binary side, sent or received, which is not paired.
LogEntry binaryEntry(LogSource source, const QString &device, const QByteArray &bytes);

/// What became of a request, for the user; empty for a note.
QString outcomeText(const LogEntry &entry);

/// A time with its unit, to three digits.
QString milliseconds(double ms);

/// What the entry takes of the log's memory.
qint64 bytesOf(const LogEntry &entry);

/// Lines of text as copied and saved: time, device, direction and message, separated by tabs.
QString linesOf(const LogEntry &entry);
/// The messages and notes of @p entries as JSON lines (see message_line.h) in the order of their times, which
/// count from the first one. A note's `dir` is "plugin", "host" or "problem".
QByteArray jsonLinesOf(const QVector<LogEntry> &entries);

} // namespace devhost
