#include "devhost/message_bar.h"

#include "devhost/look.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QStyle>

namespace devhost {

namespace {

constexpr int MostTyped = 100000; // more than a datagram takes, so that nothing is cut without a word
constexpr int MostRecalled = 100;

bool isTakenAsItIs(const QString &typed)
{
    return typed.startsWith(QLatin1Char('{'));
}

} // namespace

MessageBar::MessageBar(QAbstractItemModel *paths, QWidget *parent)
    : QWidget(parent)
    , m_target(new QLabel(this))
    , m_field(new QLineEdit(this))
    , m_send(new QPushButton(tr("Send"), this))
    , m_state(new QLabel(this))
    , m_completer(new QCompleter(paths, this))
    , m_history{QString()}
{
    setUpField();
    m_target->setTextFormat(Qt::PlainText);
    m_target->setBuddy(m_field);
    m_state->setTextFormat(Qt::PlainText);
    m_state->setProperty("role", QStringLiteral("caption"));
    m_state->setObjectName(QStringLiteral("messageState"));
    m_state->setAccessibleName(tr("What became of the message"));
    m_send->setObjectName(QStringLiteral("sendMessage"));
    m_send->setToolTip(tr("Send the message to the selected device, beside what its editor sends (Enter)"));
    m_send->setAutoDefault(false);
    connect(m_send, &QPushButton::clicked, this, &MessageBar::send);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_target);
    row->addWidget(m_field, 1);
    row->addWidget(m_state);
    row->addWidget(m_send);
    setDevice(QString());
}

void MessageBar::setUpField()
{
    m_field->setObjectName(QStringLiteral("messageField"));
    m_field->setAccessibleName(tr("Message to send"));
    m_field->setToolTip(
        tr("Sent as typed. In a text that does not begin with { the words \\r, \\n, \\t, \\\\ and "
           "\\x41 stand for one byte each. Up and Down: earlier messages."));
    m_field->setMaxLength(MostTyped);
    wearFixedFont(m_field);
    m_field->installEventFilter(this);
    // The style sheet gives the placeholder another colour than a text.
    connect(m_field, &QLineEdit::textChanged, this, [this] { m_field->style()->polish(m_field); });
    m_completer->setWidget(m_field);
    m_completer->setCompletionMode(QCompleter::PopupCompletion);
    m_completer->setModelSorting(QCompleter::CaseSensitivelySortedModel);
    connect(m_completer, QOverload<const QString &>::of(&QCompleter::activated), this, &MessageBar::complete);
    connect(m_field, &QLineEdit::textEdited, this, &MessageBar::offerPaths);
    // What became of the last message would read as if it were about this one.
    connect(m_field, &QLineEdit::textChanged, m_state, &QLabel::clear);
    connect(m_field, &QLineEdit::returnPressed, this, [this] {
        // The field gets the key before the list of paths does, which then puts the chosen path in.
        if (!m_completer->popup()->isVisible() || !m_completer->popup()->currentIndex().isValid())
            send();
    });
}

void MessageBar::setDevice(const QString &name)
{
    if (name != m_device)
        m_state->clear();
    m_device = name;
    m_target->setText(name.isEmpty() ? tr("Message:") : tr("To %1:").arg(name));
    m_field->setPlaceholderText(name.isEmpty() ? tr("Select a device to send it a message")
                                               : QStringLiteral("{\"get\":\"/info\"}"));
    m_send->setEnabled(!name.isEmpty());
}

void MessageBar::setState(const QString &text)
{
    m_state->setText(text);
}

void MessageBar::edit(const QByteArray &message)
{
    m_field->setText(typedFor(message));
    takeFocus();
}

void MessageBar::takeFocus()
{
    m_field->setFocus(Qt::ShortcutFocusReason);
}

void MessageBar::send()
{
    const QString typed = m_field->text();
    if (m_device.isEmpty() || typed.isEmpty()) {
        setState(m_device.isEmpty() ? tr("Select a device first.") : tr("Type a message first."));
        return;
    }
    m_history.removeLast();
    m_history.removeAll(typed);
    m_history << typed << QString();
    while (m_history.size() > MostRecalled)
        m_history.removeFirst();
    m_recalled = m_history.size() - 1;
    m_field->selectAll(); // what is typed next is most likely another message
    emit sendRequested(m_device, bytesOf(typed));
}

void MessageBar::recall(int step)
{
    const int wanted = m_recalled + step;
    if (wanted < 0 || wanted >= m_history.size())
        return;
    if (m_recalled == m_history.size() - 1)
        m_history.last() = m_field->text();
    m_recalled = wanted;
    m_field->setText(m_history.at(wanted));
}

bool MessageBar::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress || m_completer->popup()->isVisible())
        return QWidget::eventFilter(watched, event);
    const int key = static_cast<const QKeyEvent *>(event)->key();
    if (key != Qt::Key_Up && key != Qt::Key_Down)
        return QWidget::eventFilter(watched, event);
    recall(key == Qt::Key_Up ? -1 : 1);
    return true;
}

int MessageBar::pathStart() const
{
    static const QRegularExpression path(QStringLiteral("(?:^|[\"\\s])(/[^\"\\s]*)$"));
    return path.match(m_field->text().left(m_field->cursorPosition())).capturedStart(1);
}

void MessageBar::offerPaths()
{
    const int start = pathStart();
    const QString begun = m_field->text().mid(start, m_field->cursorPosition() - start);
    if (start < 0) {
        m_completer->popup()->hide();
        return;
    }
    m_completer->setCompletionPrefix(begun);
    const bool isComplete = m_completer->completionCount() == 1 && m_completer->currentCompletion() == begun;
    if (m_completer->completionCount() == 0 || isComplete)
        m_completer->popup()->hide();
    else
        m_completer->complete();
}

void MessageBar::complete(const QString &path)
{
    const int start = pathStart();
    if (start < 0)
        return;
    // A path that stands alone is most likely to be asked for.
    const QString before = start == 0 ? QStringLiteral("{\"get\":\"") : m_field->text().left(start);
    QString behind = m_field->text().mid(m_field->cursorPosition());
    int untilCursor = before.size() + path.size();
    static const QRegularExpression request(QStringLiteral("^\\s*\\{\\s*\"(get|set)\"\\s*:\\s*\"$"));
    const QString kind = behind.isEmpty() ? request.match(before).captured(1) : QString();
    if (kind == QLatin1String("get")) {
        behind = QStringLiteral("\"}");
    } else if (kind == QLatin1String("set")) {
        behind = QStringLiteral("\",\"value\":}");
        untilCursor += behind.size() - 1;
    }
    m_field->setText(before + path + behind);
    m_field->setCursorPosition(untilCursor);
}

QByteArray MessageBar::bytesOf(const QString &typed)
{
    if (isTakenAsItIs(typed))
        return typed.toUtf8();
    static const QRegularExpression escape(QStringLiteral(R"(\\([rnt\\]|x[0-9A-Fa-f]{2}))"));
    QByteArray bytes;
    int from = 0;
    for (auto it = escape.globalMatch(typed); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        bytes += typed.midRef(from, match.capturedStart() - from).toUtf8();
        from = match.capturedEnd();
        const QString name = match.captured(1);
        const int known = QStringLiteral("rnt\\").indexOf(name.at(0));
        bytes += known < 0 ? char(name.mid(1).toInt(nullptr, 16)) : "\r\n\t\\"[known];
    }
    return bytes + typed.midRef(from).toUtf8();
}

QString MessageBar::typedFor(const QByteArray &message)
{
    QString text = QString::fromUtf8(message);
    if (isTakenAsItIs(text) && text.toUtf8() == message && !text.contains(QChar::Null))
        return text;
    QString typed;
    for (const char byte : message) {
        const bool isPlain = byte > ' ' && byte < 0x7f && byte != '\\' && byte != '{';
        typed += isPlain || byte == ' ' ? QString(QLatin1Char(byte))
                                        : QStringLiteral("\\x%1").arg(uchar(byte), 2, 16, QLatin1Char('0'));
    }
    return typed.replace(QLatin1String("\\x0d"), QLatin1String("\\r"))
        .replace(QLatin1String("\\x0a"), QLatin1String("\\n"));
}

} // namespace devhost
