#include "simulator/recording.h"

#include "simulator/message.h"

#include <QFile>
#include <QJsonDocument>
#include <QSet>

#include <algorithm>
#include <optional>

namespace sim {

namespace {

constexpr int LineBytesMost = 1024 * 1024; // a datagram of 64 KB with every byte escaped has 400 KB
constexpr int OutstandingMost = 100;
constexpr int ReplyMsMost = 3600000;

/// The message of a line; nothing when it is damaged.
std::optional<QByteArray> messageOf(const QJsonObject &line)
{
    const QJsonValue bytes = line.value(QStringLiteral("bytes"));
    const QJsonValue text = line.value(QStringLiteral("text"));
    if (!bytes.isString())
        return text.isString() ? std::make_optional(text.toString().toUtf8()) : std::nullopt;
    const auto decoded = QByteArray::fromBase64Encoding(
        bytes.toString().toLatin1(), QByteArray::Base64Encoding | QByteArray::AbortOnBase64DecodingErrors);
    return decoded ? std::make_optional(decoded.decoded) : std::nullopt;
}

/// "get /system/usb": what request and reply have in common; empty for a text that is neither.
QString subjectOf(const QString &command, const QString &path)
{
    return command.isEmpty() ? QString() : command + QLatin1Char(' ') + path;
}

QString subjectOfRequest(const QByteArray &text)
{
    const Request request = parseRequest(text);
    return subjectOf(commandWord(request.kind), request.path);
}

QString subjectOfReply(const QByteArray &bytes)
{
    const QJsonObject reply = QJsonDocument::fromJson(bytes).object();
    return subjectOf(reply.value(QStringLiteral("cmd")).toString(),
                     reply.value(QStringLiteral("param")).toString());
}

class Reader
{
public:
    Reader(QIODevice *file, const QString &device)
        : m_file(file)
        , m_device(device)
        , m_part(LineBytesMost + 1, Qt::Uninitialized) // readLine() ends it with a zero
    {
    }

    RecordingRead read();

private:
    struct Outstanding
    {
        int request;
        QString subject;
    };

    QByteArray nextLine();
    QByteArray nextPart();
    bool isHeader(const QByteArray &line);
    void takeLine(const QByteArray &line);
    bool take(const QJsonObject &line);
    void takeDevice(const QJsonObject &line);
    void takeRequest(qint64 atMs, const QByteArray &text);
    void takeReply(qint64 atMs, const QByteArray &bytes);
    int takeOutstanding(const QString &subject);
    QByteArray shared(const QByteArray &bytes) { return *m_texts.insert(bytes); }
    void skipLine();
    void conclude();
    void note(const QString &sentence) { m_result.notes << sentence; }

    QIODevice *m_file;
    QString m_device;
    QByteArray m_part; // made once: it is long
    RecordingRead m_result;
    QStringList m_devices;
    QVector<Outstanding> m_outstanding;
    QSet<QByteArray> m_texts; // what a poll asks and hears is kept once
    qint64 m_read = 0;
    qint64 m_lastMs = 0;
    int m_line = 0;
    int m_skipped = 0;
    int m_firstSkipped = 0;
    bool m_timeGoesBack = false;
    bool m_isCutOff = false; // the last line
};

RecordingRead Reader::read()
{
    if (!isHeader(nextLine()))
        return m_result;
    while (m_read < RecordingBytesMost) {
        const QByteArray line = nextLine();
        if (line.isEmpty())
            break;
        takeLine(line);
    }
    conclude();
    return m_result;
}

/// With its end. A line that is too long comes cut off there.
QByteArray Reader::nextLine()
{
    QByteArray line = nextPart();
    ++m_line;
    QByteArray end = line;
    while (!end.endsWith('\n') && !m_file->atEnd() && m_read < RecordingBytesMost)
        end = nextPart();
    m_isCutOff = !end.endsWith('\n');
    return line;
}

/// To the end of the line, or as much as a line may have.
QByteArray Reader::nextPart()
{
    const qint64 length = qMax(qint64(0), m_file->readLine(m_part.data(), m_part.size()));
    m_read += length;
    return m_part.left(int(length));
}

bool Reader::isHeader(const QByteArray &line)
{
    const QJsonValue format = QJsonDocument::fromJson(line).object().value(QStringLiteral("recording"));
    if (!format.isDouble())
        m_result.error = QStringLiteral("it is no recording: its first line is not {\"recording\":1,...}");
    else if (format.toInt() != 1)
        m_result.error = QStringLiteral("it is a recording of format %1, not 1").arg(format.toDouble());
    return m_result.error.isEmpty();
}

void Reader::takeLine(const QByteArray &line)
{
    const QJsonDocument document = QJsonDocument::fromJson(line);
    if (document.isObject() && take(document.object()))
        return;
    if (m_isCutOff && m_read < RecordingBytesMost)
        note(QStringLiteral("The recording is cut off in line %1; it is replayed up to there.").arg(m_line));
    else
        skipLine();
}

void Reader::skipLine()
{
    if (m_skipped++ == 0)
        m_firstSkipped = m_line;
}

/// False for a line that makes no sense. Lines of other kinds than we know are from newer hosts.
bool Reader::take(const QJsonObject &line)
{
    const QString kind = line.value(QStringLiteral("dir")).toString();
    if (kind == QLatin1String("device"))
        takeDevice(line);
    if (line.value(QStringLiteral("device")).toString() != m_device)
        return true;
    const bool message
        = kind == QLatin1String("tx") || kind == QLatin1String("rx") || kind == QLatin1String("levels");
    if (!message)
        return !kind.isEmpty();
    const std::optional<QByteArray> bytes = messageOf(line);
    if (!bytes || !line.value(QStringLiteral("t_ms")).isDouble())
        return false;
    const auto written = qint64(qBound(0.0, line.value(QStringLiteral("t_ms")).toDouble(), 1e15));
    m_timeGoesBack = m_timeGoesBack || written < m_lastMs;
    m_lastMs = qMax(m_lastMs, written);
    if (kind == QLatin1String("tx"))
        takeRequest(m_lastMs, *bytes);
    else if (kind == QLatin1String("rx"))
        takeReply(m_lastMs, *bytes);
    else
        m_result.recording.levels.append({m_lastMs, shared(*bytes)});
    return true;
}

void Reader::takeDevice(const QJsonObject &line)
{
    const QString name = line.value(QStringLiteral("device")).toString();
    if (!m_devices.contains(name) && m_devices.size() < OutstandingMost)
        m_devices << name;
    if (m_device.isEmpty())
        m_device = name;
    if (name == m_device && m_result.recording.device.isEmpty())
        m_result.recording.device = line;
}

void Reader::takeRequest(qint64 atMs, const QByteArray &text)
{
    QVector<RecordedRequest> &requests = m_result.recording.requests;
    if (m_outstanding.size() == OutstandingMost)
        m_outstanding.removeFirst();
    m_outstanding.append({requests.size(), subjectOfRequest(text)});
    requests.append({atMs, shared(text), {}});
}

/// A reply belongs to the oldest request of its subject that waits, or to that one's repetition; one without
/// a subject to the last one that waits. Any other has come too often, or too late: it came while the last
/// request was the last.
void Reader::takeReply(qint64 atMs, const QByteArray &bytes)
{
    QVector<RecordedRequest> &requests = m_result.recording.requests;
    const int answered = takeOutstanding(subjectOfReply(bytes));
    const int owner = answered < 0 ? requests.size() - 1 : answered;
    if (owner < 0)
        return;
    const auto after = int(qMin(atMs - requests.at(owner).atMs, qint64(ReplyMsMost)));
    requests[owner].replies.append({after, shared(bytes)});
}

/// The request that a reply of that subject answers, -1 for none.
int Reader::takeOutstanding(const QString &subject)
{
    if (m_outstanding.isEmpty())
        return -1;
    if (subject.isEmpty())
        return m_outstanding.takeLast().request;
    const auto isOfSubject = [&subject](const Outstanding &waiting) { return waiting.subject == subject; };
    const auto oldest = std::find_if(m_outstanding.cbegin(), m_outstanding.cend(), isOfSubject);
    if (oldest == m_outstanding.cend())
        return -1;
    const QVector<RecordedRequest> &requests = m_result.recording.requests;
    const QByteArray text = requests.at(oldest->request).text;
    int answered = -1;
    for (int i = m_outstanding.size() - 1; i >= 0; --i) {
        if (requests.at(m_outstanding.at(i).request).text == text)
            answered = qMax(answered, m_outstanding.takeAt(i).request);
    }
    return answered;
}

void Reader::conclude()
{
    const QString rest = m_devices.join(QStringLiteral(", "));
    if (m_result.recording.device.isEmpty()) {
        m_result.error = rest.isEmpty() ? QStringLiteral("there is no device in it")
                                        : QStringLiteral("it is of %1, not of %2").arg(rest, m_device);
        return;
    }
    QVector<RecordedRequest> &requests = m_result.recording.requests;
    while (!requests.isEmpty() && requests.last().replies.isEmpty())
        requests.removeLast(); // the recording ended before their replies
    int unanswered = 0;
    for (const RecordedRequest &request : qAsConst(requests))
        unanswered += request.replies.isEmpty() ? 1 : 0;
    if (unanswered > 0)
        note(QStringLiteral("Requests that have no reply in it and will get none: %1 of %2.")
                 .arg(unanswered)
                 .arg(requests.size()));
    if (requests.isEmpty())
        note(QStringLiteral("Nothing was asked of %1 in it.").arg(m_device));
    if (m_skipped > 0)
        note(QStringLiteral("Damaged lines that were skipped: %1, the first is line %2.")
                 .arg(m_skipped)
                 .arg(m_firstSkipped));
    if (m_timeGoesBack)
        note(QStringLiteral("Times in it go back; where they do no time passes."));
    if (m_devices.size() > 1)
        note(QStringLiteral("It is of %1; --name chooses.").arg(rest));
    if (m_read >= RecordingBytesMost)
        note(QStringLiteral("It is longer than %1 MB; the first %2 s are replayed.")
                 .arg(RecordingBytesMost >> 20)
                 .arg(m_lastMs / 1000));
}

} // namespace

RecordingRead readRecording(QIODevice *file, const QString &device)
{
    return Reader(file, device).read();
}

RecordingRead readRecording(const QString &file, const QString &device)
{
    QFile input(file);
    RecordingRead failed;
    if (!input.open(QIODevice::ReadOnly)) {
        failed.error = input.errorString();
        return failed;
    }
    return readRecording(&input, device);
}

} // namespace sim
