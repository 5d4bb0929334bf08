#include "devhost/log_panel.h"

#include "devhost/log_delegate.h"
#include "devhost/log_detail.h"
#include "devhost/look.h"
#include "devhost/message_bar.h"
#include "devhost/plain_text.h"
#include "devhost/request_watch.h"
#include "devhost/seen_paths.h"
#include "devhost/whole_file.h"
#include "devhost/window_memory.h"

#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QSplitter>
#include <QStyle>
#include <QTableView>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace devhost {

namespace {

constexpr int MostDevices = 100; // to choose from
constexpr int RowMargin = 6;

const QLatin1String FolderKey("log/folder");

QString deviceGuide()
{
    QFile guide(QStringLiteral(":/guide/device-guide.md"));
    return guide.open(QIODevice::ReadOnly) ? QString::fromUtf8(guide.readAll()) : QString();
}

QString figuresText(const DeviceFigures &figures)
{
    QStringList parts{LogPanel::tr("Editors: %1 requests").arg(figures.requests),
                      LogPanel::tr("%1 refused").arg(figures.refused),
                      LogPanel::tr("%1 late").arg(figures.late), LogPanel::tr("%1 lost").arg(figures.lost)};
    if (figures.unreadable > 0)
        parts.append(LogPanel::tr("%1 unreadable").arg(figures.unreadable));
    if (figures.answered > 0)
        parts.append(LogPanel::tr("mean %1, worst %2")
                         .arg(milliseconds(figures.meanMs()), milliseconds(figures.worstMs)));
    return parts.join(QStringLiteral("  \u00b7  "));
}

} // namespace

LogPanel::LogPanel(CommunicationLog *log, const RequestWatch *requests, WindowMemory *memory, QWidget *parent)
    : QWidget(parent)
    , m_log(log)
    , m_requests(requests)
    , m_memory(memory)
    , m_filter(new LogFilter(log, this))
    , m_view(new QTableView(this))
    , m_detail(new LogDetail(log, this))
    , m_paths(new SeenPaths(this))
    , m_message(new MessageBar(m_paths, this))
    , m_filterEdit(new QLineEdit(this))
    , m_devices(new QComboBox(this))
    , m_figures(new QLabel(this))
{
    setObjectName(QStringLiteral("logPanel"));
    m_paths->learn(deviceGuide());
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 6, 0, 0);
    column->setSpacing(6);
    auto *splitter = new QSplitter(this);
    splitter->setObjectName(QStringLiteral("logSplitter"));
    markRemembered(splitter);
    splitter->addWidget(m_view);
    splitter->addWidget(m_detail);
    splitter->setStretchFactor(0, 1);
    splitter->setSizes({760, 340});
    splitter->setChildrenCollapsible(false);
    column->addLayout(createFilterRow());
    column->addWidget(splitter, 1);
    column->addWidget(m_message);
    column->addLayout(createBottomRow());
    setUpView();
    setUpActions();
    setUpFollowing();
    connect(m_log, &QAbstractItemModel::rowsInserted, this,
            [this](const QModelIndex &, int first, int last) { noteNews(first, last); });
    connect(m_log, &CommunicationLog::entryChanged, this, &LogPanel::handleChange);
    connect(m_message, &MessageBar::sendRequested, this, &LogPanel::sendRequested);
}

void LogPanel::setUpView()
{
    m_view->setObjectName(QStringLiteral("logView"));
    m_view->setAccessibleName(tr("Communication log"));
    m_view->setModel(m_filter);
    markRemembered(m_view);
    m_view->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_view->setShowGrid(false);
    m_view->setWordWrap(false);
    m_view->setTabKeyNavigation(false);
    m_view->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_view->verticalHeader()->hide();
    m_view->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    wearFixedFont(m_view);
    m_view->setItemDelegate(new LogDelegate(m_filter, m_view));
    sizeByText(m_view, {12, 10, 3, 34, 10}, RowMargin);
    QHeaderView *header = m_view->horizontalHeader();
    header->setStretchLastSection(true);
    header->setHighlightSections(false);
    connect(m_view->selectionModel(), &QItemSelectionModel::currentChanged, this, &LogPanel::showChosen);
}

void LogPanel::setUpFollowing()
{
    // Once for all that a turn of the event loop brings: scrolling lays the whole view out.
    m_following.setSingleShot(true);
    connect(&m_following, &QTimer::timeout, this, &LogPanel::followIfWanted);
    connect(m_filter, &QAbstractItemModel::rowsInserted, &m_following, QOverload<>::of(&QTimer::start));
    connect(m_filter, &QAbstractItemModel::modelReset, this, &LogPanel::followIfWanted);
    connect(m_view->verticalScrollBar(), &QScrollBar::actionTriggered, this, [this] {
        const QScrollBar *bar = m_view->verticalScrollBar();
        m_follow->setChecked(bar->sliderPosition() == bar->maximum());
    });
}

void LogPanel::followIfWanted()
{
    if (m_follow->isChecked())
        m_view->scrollToBottom();
}

void LogPanel::showChosen()
{
    const QModelIndex current = m_view->currentIndex();
    if (current.isValid())
        choose(m_filter->numberOf(current.row()));
}

void LogPanel::choose(qint64 number)
{
    m_detail->show(number);
    const bool isRequest = chosenRequest();
    m_sendAgain->setEnabled(isRequest);
    m_edit->setEnabled(isRequest);
}

void LogPanel::setUpActions()
{
    m_sendAgain
        = addAction(tr("Resend"), tr("Ctrl+R"), tr("Send the chosen message to its device once more"));
    connect(m_sendAgain, &QAction::triggered, this, [this] {
        if (const LogEntry *request = chosenRequest())
            emit sendRequested(request->device, QByteArray(request->message));
    });
    m_edit = addAction(tr("Edit"), tr("Ctrl+E"), tr("Put the chosen message into the message box"));
    connect(m_edit, &QAction::triggered, this, [this] {
        if (const LogEntry *request = chosenRequest())
            m_message->edit(request->message);
    });
    QAction *copy = new QAction(tr("Copy"), this);
    connect(copy, &QAction::triggered, this, &LogPanel::copySelected);
    m_view->addAction(copy);
    m_view->setContextMenuPolicy(Qt::ActionsContextMenu);
    choose(-1);
}

QAction *LogPanel::addAction(const QString &text, const QKeySequence &keys, const QString &tip)
{
    auto *action = new QAction(text, this);
    action->setShortcut(keys);
    action->setToolTip(QStringLiteral("%1 (%2)").arg(tip, keys.toString(QKeySequence::NativeText)));
    m_view->addAction(action);
    m_detail->addButton(action);
    return action;
}

const LogEntry *LogPanel::chosenRequest() const
{
    const LogEntry *entry = m_log->numbered(m_detail->number());
    return entry && entry->source == LogSource::Sent ? entry : nullptr;
}

void LogPanel::setTarget(const QString &deviceName)
{
    m_message->setDevice(deviceName);
}

void LogPanel::showSent(qint64 number)
{
    m_sent = number;
    if (number < 0) {
        m_message->setState(tr("Not sent."));
        return;
    }
    m_details->setChecked(true);
    markRow(number);
    choose(number);
    handleChange(number);
}

void LogPanel::markRow(qint64 number)
{
    int row = m_filter->rowCount() - 1;
    while (row >= 0 && m_filter->numberOf(row) > number)
        --row;
    const bool isShown = row >= 0 && m_filter->numberOf(row) == number;
    m_view->selectionModel()->setCurrentIndex(isShown ? m_filter->index(row, 0) : QModelIndex(),
                                              QItemSelectionModel::ClearAndSelect
                                                  | QItemSelectionModel::Rows);
}

void LogPanel::handleChange(qint64 number)
{
    const LogEntry *entry = m_log->numbered(number);
    if (!entry)
        return;
    m_paths->note(*entry);
    if (number == m_sent)
        m_message->setState(outcomeText(*entry));
}

void LogPanel::noteNews(int first, int last)
{
    // What was sent a moment ago has its row only now.
    if (m_log->numberOf(first) <= m_sent && m_sent <= m_log->numberOf(last) && m_detail->number() == m_sent)
        markRow(m_sent);
    for (int row = first; row <= last; ++row) {
        const LogEntry &entry = m_log->entry(row);
        m_paths->note(entry);
        if (entry.source != LogSource::Sent || m_knownDevices.contains(entry.device)
            || m_knownDevices.size() == MostDevices)
            continue;
        m_knownDevices.insert(entry.device);
        m_devices->addItem(entry.device, entry.device);
    }
}

void LogPanel::showFigures()
{
    const QString chosen = m_devices->currentData().toString();
    const QString text
        = figuresText(chosen.isEmpty() ? m_requests->figuresOfAll() : m_requests->figures(chosen));
    m_figures->setText(text);
    m_figures->setToolTip(
        tr("%1\nRequests of editors, not those of the message box. Late: answered after two "
           "seconds. Lost: not answered within ten. Mean and worst: reply times.")
            .arg(text));
}

void LogPanel::focusMessage()
{
    m_message->takeFocus();
}

void LogPanel::focusFilter()
{
    m_filterEdit->setFocus(Qt::ShortcutFocusReason);
    m_filterEdit->selectAll();
}

QList<int> LogPanel::selectedRows() const
{
    QList<int> rows;
    for (const QModelIndex &index : m_view->selectionModel()->selectedRows())
        rows.append(index.row());
    std::sort(rows.begin(), rows.end());
    return rows;
}

void LogPanel::copySelected()
{
    const QList<int> rows = selectedRows();
    QString lines;
    for (const LogEntry &entry : rows.isEmpty() ? m_filter->allEntries() : m_filter->entries(rows))
        lines += linesOf(entry);
    QGuiApplication::clipboard()->setText(lines);
}

void LogPanel::saveShown()
{
    const QString path = QFileDialog::getSaveFileName(
        this, tr("Save Communication Log"),
        QDir(m_memory->folder(FolderKey)).filePath(QStringLiteral("communication.log")),
        tr("Log files (*.log *.txt);;JSON lines (*.jsonl);;All files (*)"));
    if (path.isEmpty())
        return;
    m_memory->keepFolderOf(FolderKey, path);
    const QVector<LogEntry> entries = m_filter->allEntries();
    QString lines;
    for (const LogEntry &entry : entries)
        lines += linesOf(entry);
    const bool asJson = path.endsWith(QLatin1String(".jsonl"), Qt::CaseInsensitive);
    const QString error = writeWholeFile(path, asJson ? jsonLinesOf(entries) : lines.toUtf8());
    if (error.isEmpty())
        emit saved(tr("The log was saved to %1.").arg(QDir::toNativeSeparators(path)));
    else
        emit problem(error);
}

} // namespace devhost
