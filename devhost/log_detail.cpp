#include "devhost/log_detail.h"

#include "devhost/communication_log.h"
#include "devhost/look.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QSyntaxHighlighter>
#include <QToolButton>
#include <QVBoxLayout>

namespace devhost {

namespace {

/// Tells names, texts and other values of JSON apart.
class JsonColors : public QSyntaxHighlighter
{
public:
    using QSyntaxHighlighter::QSyntaxHighlighter;

protected:
    static constexpr int InJson = 1; ///< state of a line after which the JSON goes on

    void highlightBlock(const QString &line) override
    {
        const bool begins = line.startsWith(QLatin1Char('{')) || line.startsWith(QLatin1Char('['));
        if (!begins && previousBlockState() != InJson)
            return; // a text or bytes
        const bool ends = line.startsWith(QLatin1Char('}')) || line.startsWith(QLatin1Char(']'))
            || (begins && line.endsWith(QLatin1Char(']')));
        setCurrentBlockState(ends ? -1 : InJson);
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

QString headingOf(const LogEntry &entry)
{
    const QString outcome = outcomeText(entry);
    return outcome.isEmpty() ? entry.time.toString(QStringLiteral("HH:mm:ss.zzz  ")) + entry.device : outcome;
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
    , m_top(new QHBoxLayout)
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
    wearFixedFont(m_text);
    m_text->setPlaceholderText(tr("Choose a message to see all of it."));
    new JsonColors(m_text->document());
    m_top->addWidget(m_heading, 1);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(6, 0, 0, 0);
    column->addLayout(m_top);
    column->addWidget(m_text);
    connect(log, &CommunicationLog::entryChanged, this, [this](qint64 number) {
        if (number == m_number)
            refresh();
    });
}

void LogDetail::addButton(QAction *action)
{
    auto *button = new QToolButton(this);
    button->setDefaultAction(action);
    button->setFocusPolicy(Qt::StrongFocus);
    m_top->addWidget(button);
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
    const QString text = entry ? textOf(*entry) : QString();
    // Looking for the end of a word over and over takes a second in one of 64 KB.
    static const QRegularExpression longWord(QStringLiteral("\\S{2000}"));
    m_text->setWordWrapMode(text.contains(longWord) ? QTextOption::WrapAnywhere
                                                    : QTextOption::WrapAtWordBoundaryOrAnywhere);
    m_text->setPlainText(text);
}

} // namespace devhost
