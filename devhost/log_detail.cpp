#include "devhost/log_detail.h"

#include "devhost/communication_log.h"
#include "devhost/look.h"

#include <QEvent>
#include <QLabel>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QSyntaxHighlighter>
#include <QVBoxLayout>

namespace devhost {

namespace {

/// Tells names, texts and other values of JSON apart.
class JsonColors : public QSyntaxHighlighter
{
public:
    using QSyntaxHighlighter::QSyntaxHighlighter;

protected:
    void highlightBlock(const QString &line) override
    {
        static const QRegularExpression token(QStringLiteral(
            R"re((?<name>"(?:[^"\\]++|\\.)*+"(?=\s*:))|(?<text>"(?:[^"\\]++|\\.)*+")|(?<value>-?\d[\d.eE+-]*|true|false|null))re"));
        const QPair<QString, const char *> colors[] = {{QStringLiteral("name"), "sent"},
                                                       {QStringLiteral("text"), "received"},
                                                       {QStringLiteral("value"), "changed"}};
        for (auto match = token.globalMatch(line); match.hasNext();) {
            const QRegularExpressionMatch found = match.next();
            for (const auto &color : colors)
                setFormat(found.capturedStart(color.first), found.capturedLength(color.first),
                          lookColor(color.second));
        }
    }
};

QString outcomeOf(const LogEntry &entry)
{
    const QString time = milliseconds(entry.replyMs);
    switch (entry.outcome) {
    case Outcome::None:
        return QString();
    case Outcome::Waiting:
        return LogDetail::tr("waits for its reply");
    case Outcome::Lost:
        return LogDetail::tr("never answered");
    case Outcome::Unasked:
        return LogDetail::tr("a reply that no request waits for");
    case Outcome::Refused:
        return LogDetail::tr("refused after %1").arg(time);
    case Outcome::Unreadable:
        return LogDetail::tr("answered after %1 with what is no reply").arg(time);
    default:
        return entry.isLate ? LogDetail::tr("answered late, after %1").arg(time)
                            : LogDetail::tr("answered after %1").arg(time);
    }
}

QString headingOf(const LogEntry &entry)
{
    QStringList parts{entry.time.toString(QStringLiteral("HH:mm:ss.zzz")), entry.device, outcomeOf(entry)};
    parts.removeAll(QString());
    return parts.join(QStringLiteral("  \u00b7  "));
}

QString textOf(const LogEntry &entry)
{
    QStringList parts;
    if (entry.source != LogSource::Received)
        parts.append(indented(entry.message));
    if (entry.replyMs >= 0)
        parts.append(indented(entry.reply));
    return parts.join(QStringLiteral("\n\n"));
}

} // namespace

LogDetail::LogDetail(const CommunicationLog *log, QWidget *parent)
    : QWidget(parent)
    , m_log(log)
    , m_heading(new QLabel(this))
    , m_text(new QPlainTextEdit(this))
{
    m_heading->setTextFormat(Qt::PlainText);
    m_heading->setProperty("role", QStringLiteral("caption"));
    m_heading->setMinimumWidth(1); // a long one is cut, it does not push the table away
    m_text->setObjectName(QStringLiteral("logDetail"));
    m_text->setAccessibleName(tr("Whole text of the chosen message and its reply"));
    m_text->setReadOnly(true);
    m_text->setTabChangesFocus(true);
    m_text->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_text->setFont(fixedFont());
    m_text->setPlaceholderText(tr("Choose a message to see all of it."));
    new JsonColors(m_text->document());
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(6, 0, 0, 0);
    column->addWidget(m_heading);
    column->addWidget(m_text);
    connect(log, &CommunicationLog::entryChanged, this, [this](qint64 number) {
        if (number == m_number)
            refresh();
    });
}

void LogDetail::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::FontChange)
        m_text->setFont(fixedFont());
    QWidget::changeEvent(event);
}

void LogDetail::show(qint64 number)
{
    if (number == m_number)
        return;
    m_number = number;
    refresh();
}

void LogDetail::refresh()
{
    const LogEntry *entry = m_log->numbered(m_number);
    m_heading->setText(entry ? headingOf(*entry) : QString());
    m_text->setPlainText(entry ? textOf(*entry) : QString());
}

} // namespace devhost
