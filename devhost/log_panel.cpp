#include "devhost/log_panel.h"

#include "devhost/log_detail.h"
#include "devhost/look.h"
#include "devhost/plain_text.h"
#include "devhost/request_watch.h"
#include "devhost/whole_file.h"
#include "devhost/window_memory.h"

#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QEvent>
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

QString figuresText(const DeviceFigures &figures)
{
    QStringList parts{LogPanel::tr("%1 requests").arg(figures.requests),
                      LogPanel::tr("%1 refused").arg(figures.refused),
                      LogPanel::tr("%1 late").arg(figures.late), LogPanel::tr("%1 lost").arg(figures.lost)};
    if (figures.unreadable > 0)
        parts.append(LogPanel::tr("%1 unreadable").arg(figures.unreadable));
    if (figures.answered > 0)
        parts.append(LogPanel::tr("reply time %1, at worst %2")
                         .arg(milliseconds(figures.meanMs()), milliseconds(figures.worstMs)));
    return parts.join(QStringLiteral("  \u00b7  "));
}

} // namespace

LogPanel::LogPanel(CommunicationLog *log, const RequestWatch *requests, QWidget *parent)
    : QWidget(parent)
    , m_log(log)
    , m_requests(requests)
    , m_filter(new LogFilter(log, this))
    , m_view(new QTableView(this))
    , m_detail(new LogDetail(log, this))
    , m_filterEdit(new QLineEdit(this))
    , m_devices(new QComboBox(this))
    , m_figures(new QLabel(this))
{
    setObjectName(QStringLiteral("logPanel"));
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
    column->addLayout(createBottomRow());
    setUpView();
    setUpFollowing();
    connect(m_log, &QAbstractItemModel::rowsInserted, this,
            [this](const QModelIndex &, int first, int last) { noteDevices(first, last); });
    connect(m_requests, &RequestWatch::figuresChanged, this, &LogPanel::showFigures);
    showFigures();
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
    wearFont();
    QHeaderView *header = m_view->horizontalHeader();
    header->setStretchLastSection(true);
    header->setHighlightSections(false);
    const int digit = m_view->fontMetrics().horizontalAdvance(QLatin1Char('0'));
    const QPair<CommunicationLog::Column, int> widths[] = {{CommunicationLog::Time, 12},
                                                           {CommunicationLog::Device, 10},
                                                           {CommunicationLog::Source, 3},
                                                           {CommunicationLog::Text, 34},
                                                           {CommunicationLog::ReplyTime, 10}};
    for (const auto &width : widths)
        m_view->setColumnWidth(width.first, width.second * digit + 18);
    connect(m_view->selectionModel(), &QItemSelectionModel::currentChanged, this, &LogPanel::showChosen);
}

void LogPanel::wearFont()
{
    m_view->setFont(fixedFont());
    m_view->verticalHeader()->setDefaultSectionSize(m_view->fontMetrics().height() + 6);
}

void LogPanel::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::FontChange)
        wearFont();
    QWidget::changeEvent(event);
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

QHBoxLayout *LogPanel::createFilterRow()
{
    auto *row = new QHBoxLayout;
    m_filterEdit->setObjectName(QStringLiteral("logFilter"));
    markRemembered(m_filterEdit);
    m_filterEdit->setAccessibleName(tr("Log filter"));
    m_filterEdit->setPlaceholderText(tr("Filter the log, for example: usb -status"));
    m_filterEdit->setToolTip(tr("Show the messages that hold every word; -word hides messages (Ctrl+F)"));
    m_filterEdit->setClearButtonEnabled(true);
    connect(m_filterEdit, &QLineEdit::textChanged, m_filter, &LogFilter::setText);
    // The style sheet gives the placeholder another colour than a text.
    connect(m_filterEdit, &QLineEdit::textChanged, m_filterEdit,
            [this] { m_filterEdit->style()->polish(m_filterEdit); });
    row->addWidget(m_filterEdit, 1);
    m_devices->setObjectName(QStringLiteral("logDevice"));
    m_devices->setAccessibleName(tr("Device whose messages are shown"));
    m_devices->setToolTip(tr("Show the messages of this device"));
    m_devices->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    m_devices->addItem(tr("All devices"));
    connect(m_devices, QOverload<int>::of(&QComboBox::currentIndexChanged), this, [this] {
        m_filter->setDevice(m_devices->currentData().toString());
        showFigures();
        followIfWanted();
    });
    row->addWidget(m_devices);
    addShownSwitch(row, LogFilter::Polling, QStringLiteral("logPolling"), tr("Polling"),
                   tr("Show the status and level requests that repeat themselves"));
    addShownSwitch(row, LogFilter::Echoes, QStringLiteral("logEchoes"), tr("Echoes"),
                   tr("Show what plugins write about the messages that are here anyway"));
    addShownSwitch(row, LogFilter::Notes, QStringLiteral("logNotes"), tr("Notes"),
                   tr("Show what plugins, host and simulator write"));
    QToolButton *problems = addSwitch(
        row, QStringLiteral("logProblems"), tr("Problems only"),
        tr("Show only what was refused, late, lost, unreadable or not asked for, and warnings"), false);
    connect(problems, &QToolButton::toggled, this, [this](bool only) {
        m_filter->setOnlyProblems(only);
        followIfWanted();
    });
    return row;
}

QHBoxLayout *LogPanel::createBottomRow()
{
    auto *row = new QHBoxLayout;
    m_figures->setObjectName(QStringLiteral("logFigures"));
    m_figures->setAccessibleName(tr("How devices answer"));
    m_figures->setTextFormat(Qt::PlainText);
    m_figures->setProperty("role", QStringLiteral("caption"));
    m_figures->setMinimumWidth(1);
    m_figures->setToolTip(
        tr("Requests of editors. Late: answered after two seconds. Lost: not answered within ten."));
    row->addWidget(m_figures, 1);
    QToolButton *details = addSwitch(row, QStringLiteral("logDetails"), tr("Details"),
                                     tr("Show the whole text of the chosen message"), true);
    connect(details, &QToolButton::toggled, m_detail, &QWidget::setVisible);
    m_follow = addSwitch(row, QStringLiteral("logFollow"), tr("Follow"),
                         tr("Keep the newest message in view"), true);
    connect(m_follow, &QToolButton::toggled, this, &LogPanel::followIfWanted);
    connect(addButton(row, tr("Copy"), tr("Copy the selected messages, or all shown ones (Ctrl+Shift+C)")),
            &QToolButton::clicked, this, &LogPanel::copySelected);
    connect(addButton(row, tr("Save..."),
                      tr("Save the shown messages to a file, as text or as JSON lines (Ctrl+Shift+L)")),
            &QToolButton::clicked, this, &LogPanel::saveShown);
    connect(addButton(row, tr("Clear"), tr("Empty the log")), &QToolButton::clicked, m_log,
            &CommunicationLog::clear);
    return row;
}

QToolButton *LogPanel::addButton(QHBoxLayout *row, const QString &text, const QString &tip)
{
    auto *button = new QToolButton(this);
    button->setText(text);
    button->setFocusPolicy(Qt::StrongFocus); // the Tab key reaches it
    button->setToolTip(tip);
    row->addWidget(button);
    return button;
}

QToolButton *LogPanel::addSwitch(QHBoxLayout *row, const QString &name, const QString &text,
                                 const QString &tip, bool on)
{
    QToolButton *button = addButton(row, text, tip);
    button->setCheckable(true);
    button->setChecked(on);
    button->setObjectName(name);
    markRemembered(button);
    return button;
}

void LogPanel::addShownSwitch(QHBoxLayout *row, LogFilter::Kind kind, const QString &name,
                              const QString &text, const QString &tip)
{
    connect(addSwitch(row, name, text, tip, m_filter->isShown(kind)), &QToolButton::toggled, this,
            [this, kind](bool shown) {
                m_filter->setShown(kind, shown);
                followIfWanted();
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
        m_detail->show(m_filter->numberOf(current.row()));
}

void LogPanel::noteDevices(int first, int last)
{
    for (int row = first; row <= last; ++row) {
        const LogEntry &entry = m_log->entry(row);
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
    m_figures->setText(
        figuresText(chosen.isEmpty() ? m_requests->figuresOfAll() : m_requests->figures(chosen)));
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
        this, tr("Save Communication Log"), QStringLiteral("communication.log"),
        tr("Log files (*.log *.txt);;JSON lines (*.jsonl);;All files (*)"));
    if (path.isEmpty())
        return;
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
