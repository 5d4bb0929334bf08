#include "devhost/communication_log.h"

#include <QColor>

#include <algorithm>

namespace devhost {

namespace {

struct SourceLook
{
    const char *sign; ///< as shown in its column
    const char *word; ///< as written into files
    const char *tip;
    QRgb color; ///< on the dark style sheet
};

constexpr SourceLook looks[] = {
    {"\u2192", "tx", "Sent to the device", 0xff8cc8ff},
    {"\u2190", "rx", "Received from the device", 0xff9be29b},
    {"\u2022", "plugin", "Written by the plugin", 0xffb8b8b8},
    {"\u2022", "host", "Written by the host", 0xffe0d0a8},
    {"!", "problem", "Something that needs attention", 0xffff7707},
};

constexpr QRgb RefusalColor = 0xffff6b5e;

const SourceLook &lookOf(LogSource source)
{
    return looks[int(source)];
}

bool isRefusal(LogSource source, const QString &text)
{
    if (source != LogSource::Received)
        return false;
    const bool refused
        = text.startsWith(QLatin1Char('{')) && !text.contains(QLatin1String("\"result\":\"OK\""));
    return refused || text.startsWith(QLatin1String("NACK"));
}

qint64 bytesOf(const LogEntry &entry)
{
    return qint64(sizeof(QChar)) * (entry.device.size() + entry.text.size());
}

// Laying out a line of a whole datagram takes longer than its row is on screen.
QString beginningOf(const QString &text)
{
    constexpr int most = 1000;
    if (text.size() <= most)
        return text;
    return CommunicationLog::tr("%1 ... (%2 characters; copy the line to see all)")
        .arg(text.left(most))
        .arg(text.size());
}

QVariant shown(const LogEntry &entry, int column)
{
    switch (column) {
    case CommunicationLog::Time:
        return entry.time.toString(QStringLiteral("HH:mm:ss.zzz"));
    case CommunicationLog::Device:
        return entry.device;
    case CommunicationLog::Source:
        return QString::fromUtf8(lookOf(entry.source).sign);
    default:
        return beginningOf(entry.text);
    }
}

// A row is one line high; a text command ends in a carriage return.
QString oneLine(QString text)
{
    text.replace(QLatin1Char('\r'), QStringLiteral("\\r"));
    text.replace(QLatin1Char('\n'), QStringLiteral("\\n"));
    return text;
}

} // namespace

CommunicationLog::CommunicationLog(int mostLines, qint64 mostBytes, QObject *parent)
    : QAbstractTableModel(parent)
    , m_mostLines(mostLines)
    , m_mostBytes(mostBytes)
{
}

void CommunicationLog::append(LogSource source, const QString &device, const QString &text)
{
    const LogEntry entry{QDateTime::currentDateTime(), source, device, oneLine(text),
                         isRefusal(source, text)};
    makeRoomFor(entry);
    const int row = int(m_entries.size());
    beginInsertRows({}, row, row);
    m_entries.push_back(entry);
    m_bytes += bytesOf(entry);
    endInsertRows();
}

// A tenth at a time, so that a view is not told to drop a row with every line that comes in.
void CommunicationLog::makeRoomFor(const LogEntry &newcomer)
{
    int count = 0;
    if (rowCount() == m_mostLines)
        count = std::max(1, m_mostLines / 10);
    if (m_bytes + bytesOf(newcomer) > m_mostBytes)
        count = std::max(count, countToDrop(m_bytes + bytesOf(newcomer) - m_mostBytes + m_mostBytes / 10));
    if (count == 0)
        return;
    beginRemoveRows({}, 0, count - 1);
    for (int dropped = 0; dropped < count; ++dropped) {
        m_bytes -= bytesOf(m_entries.front());
        m_entries.pop_front();
    }
    endRemoveRows();
}

/// How many of the oldest lines hold @p excess bytes together, or all of them.
int CommunicationLog::countToDrop(qint64 excess) const
{
    int count = 0;
    while (count < rowCount() && excess > 0)
        excess -= bytesOf(entry(count++));
    return count;
}

void CommunicationLog::clear()
{
    beginResetModel();
    m_entries.clear();
    m_bytes = 0;
    endResetModel();
}

int CommunicationLog::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_entries.size());
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
        return index.column() == Text ? QVariant() : QVariant(tr(lookOf(line.source).tip));
    case Qt::ForegroundRole:
        return QColor(line.refusal ? RefusalColor : lookOf(line.source).color);
    case Qt::TextAlignmentRole:
        return index.column() == Source ? QVariant(int(Qt::AlignCenter)) : QVariant();
    default:
        return QVariant();
    }
}

QVariant CommunicationLog::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QVariant();
    const QString titles[] = {tr("Time"), tr("Device"), QString(), tr("Message")};
    return titles[section];
}

QString CommunicationLog::lineOf(const LogEntry &entry)
{
    return QStringLiteral("%1\t%2\t%3\t%4")
        .arg(entry.time.toString(Qt::ISODateWithMs), entry.device, QLatin1String(lookOf(entry.source).word),
             entry.text);
}

} // namespace devhost
