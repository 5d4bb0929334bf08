#include "devhost/communication_log.h"

#include "devhost/look.h"
#include "devhost/plain_text.h"

#include <algorithm>
#include <utility>

namespace devhost {

namespace {

constexpr int ShowingMs = 40;

struct SourceLook
{
    const char *sign;
    const char *tip;
    const char *color; ///< as in lookColor()
};

constexpr SourceLook looks[] = {
    {"\u2192", QT_TRANSLATE_NOOP("devhost::CommunicationLog", "Sent to the device"), "sent"},
    {"\u2190",
     QT_TRANSLATE_NOOP("devhost::CommunicationLog", "Received from the device without being asked for"),
     "received"},
    {"\u2022", QT_TRANSLATE_NOOP("devhost::CommunicationLog", "Written by the plugin"), "quiet"},
    {"\u2022", QT_TRANSLATE_NOOP("devhost::CommunicationLog", "Written by the host"), "text"},
    {"!", QT_TRANSLATE_NOOP("devhost::CommunicationLog", "Something that needs attention"), "changed"},
};
constexpr SourceLook handLook
    = {"\u21d2", QT_TRANSLATE_NOOP("devhost::CommunicationLog", "Sent to the device from the message box"),
       "sent"};

const SourceLook &lookOf(const LogEntry &entry)
{
    return entry.isByHand ? handLook : looks[int(entry.source)];
}

const char *colorNameOf(const LogEntry &entry, int column)
{
    const bool isAnswer = column == CommunicationLog::Reply || column == CommunicationLog::ReplyTime;
    if (entry.isProblem() && !entry.isNote() && (isAnswer || column == CommunicationLog::Source))
        return "refused";
    if (column == CommunicationLog::Reply)
        return "received";
    const bool isMessage = column == CommunicationLog::Text || column == CommunicationLog::Source;
    return isMessage ? lookOf(entry).color : "quiet";
}

QVariant colorOf(const LogEntry &entry, int column)
{
    const QColor color = lookColor(colorNameOf(entry, column));
    return color.isValid() ? QVariant(color) : QVariant(); // before a look is worn, there is none
}

QString replyTime(const LogEntry &entry)
{
    if (entry.outcome == Outcome::Lost)
        return CommunicationLog::tr("no reply");
    if (entry.outcome == Outcome::Waiting)
        return CommunicationLog::tr("waits");
    return entry.replyMs < 0 || entry.outcome == Outcome::Unasked ? QString() : milliseconds(entry.replyMs);
}

QString shown(const LogEntry &entry, int column)
{
    switch (column) {
    case CommunicationLog::Time:
        return entry.time.toString(QStringLiteral("HH:mm:ss.zzz"));
    case CommunicationLog::Device:
        return entry.device;
    case CommunicationLog::Source:
        return QString::fromUtf8(lookOf(entry).sign);
    case CommunicationLog::Text:
        return entry.source == LogSource::Received ? CommunicationLog::tr("(not asked for)") : entry.summary;
    case CommunicationLog::ReplyTime:
        return replyTime(entry);
    default:
        return entry.replySummary;
    }
}

QString tipOf(const LogEntry &entry, int column)
{
    if (entry.isNote() && column > CommunicationLog::Text)
        return tipOf(entry, CommunicationLog::Text); // which is drawn over these columns, too
    if (column == CommunicationLog::Text || column == CommunicationLog::Reply)
        return plainTip(shown(entry, column));
    return CommunicationLog::tr(lookOf(entry).tip);
}

int alignmentOf(int column)
{
    if (column == CommunicationLog::Source)
        return Qt::AlignCenter;
    return int(column == CommunicationLog::ReplyTime ? Qt::AlignRight : Qt::AlignLeft)
        | int(Qt::AlignVCenter);
}

} // namespace

CommunicationLog::CommunicationLog(int mostLines, qint64 mostBytes, QObject *parent)
    : QAbstractTableModel(parent)
    , m_mostLines(mostLines)
    , m_mostBytes(mostBytes)
{
    m_showing.setSingleShot(true);
    m_showing.setInterval(ShowingMs);
    connect(&m_showing, &QTimer::timeout, this, &CommunicationLog::showNews);
}

qint64 CommunicationLog::append(const LogEntry &entry)
{
    makeRoom(1, bytesOf(entry));
    m_entries.push_back(entry);
    m_bytes += bytesOf(entry);
    if (!m_showing.isActive())
        m_showing.start();
    return newest();
}

void CommunicationLog::append(LogSource source, const QString &device, const QString &text)
{
    append(noteEntry(source, device, text));
}

bool CommunicationLog::answer(qint64 request, const QByteArray &bytes, const RequestWatch::Answer &answer)
{
    LogEntry *entry = find(request);
    if (!entry)
        return false;
    m_bytes -= bytesOf(*entry);
    entry->setReply(bytes, answer);
    m_bytes += bytesOf(*entry);
    change(request);
    makeRoom(0, 0);
    return true;
}

void CommunicationLog::markLost(qint64 request)
{
    if (LogEntry *entry = find(request)) {
        entry->outcome = Outcome::Lost;
        change(request);
    }
}

void CommunicationLog::change(qint64 number)
{
    m_changed.insert(number);
    if (!m_showing.isActive())
        m_showing.start();
}

void CommunicationLog::showNews()
{
    m_showing.stop();
    const int last = int(m_entries.size()) - 1;
    const QSet<qint64> changed = std::exchange(m_changed, {});
    if (m_rows <= last) {
        beginInsertRows({}, m_rows, last);
        m_rows = last + 1;
        endInsertRows();
    }
    for (qint64 number : changed) {
        const int row = int(number - m_first);
        if (row >= 0)
            emit dataChanged(index(row, 0), index(row, ColumnCount - 1));
        emit entryChanged(number);
    }
}

// A tenth at a time, so that a view is not told to drop a row with every line that comes in.
void CommunicationLog::makeRoom(int lines, qint64 bytes)
{
    int count = 0;
    if (int(m_entries.size()) + lines > m_mostLines)
        count = std::max(1, m_mostLines / 10);
    if (m_bytes + bytes > m_mostBytes)
        count = std::max(count, countToDrop(m_bytes + bytes - m_mostBytes + m_mostBytes / 10));
    count = std::min(count, int(m_entries.size()) - 1 + lines);
    if (count <= 0)
        return;
    showNews();
    beginRemoveRows({}, 0, count - 1);
    for (int dropped = 0; dropped < count; ++dropped) {
        m_bytes -= bytesOf(m_entries.front());
        m_entries.pop_front();
    }
    m_first += count;
    m_rows -= count;
    endRemoveRows();
}

/// How many of the oldest lines hold @p excess bytes together, or all of them.
int CommunicationLog::countToDrop(qint64 excess) const
{
    int count = 0;
    while (count < int(m_entries.size()) && excess > 0)
        excess -= bytesOf(entry(count++));
    return count;
}

void CommunicationLog::clear()
{
    beginResetModel();
    m_first += qint64(m_entries.size());
    m_entries.clear();
    m_changed.clear();
    m_bytes = 0;
    m_rows = 0;
    endResetModel();
}

const LogEntry *CommunicationLog::numbered(qint64 number) const
{
    const qint64 row = number - m_first;
    return row >= 0 && row < qint64(m_entries.size()) ? &m_entries[std::size_t(row)] : nullptr;
}

LogEntry *CommunicationLog::find(qint64 number)
{
    return const_cast<LogEntry *>(std::as_const(*this).numbered(number));
}

int CommunicationLog::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_rows;
}

int CommunicationLog::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant CommunicationLog::data(const QModelIndex &index, int role) const
{
    const LogEntry &line = entry(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return shown(line, index.column());
    case Qt::ToolTipRole:
        return tipOf(line, index.column());
    case Qt::ForegroundRole:
        return colorOf(line, index.column());
    case Qt::TextAlignmentRole:
        return alignmentOf(index.column());
    default:
        return QVariant();
    }
}

QVariant CommunicationLog::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::TextAlignmentRole)
        return alignmentOf(section);
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QVariant();
    const QString titles[]
        = {tr("Time"), tr("Device"), QString(), tr("Message"), tr("Reply time"), tr("Reply")};
    return titles[section];
}

} // namespace devhost
