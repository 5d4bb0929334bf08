#include "devhost/log_panel.h"

#include "devhost/log_filter.h"
#include "devhost/whole_file.h"

#include <QClipboard>
#include <QDir>
#include <QFileDialog>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QStyle>
#include <QTableView>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace devhost {

namespace {

// Four buttons that are down most of the time would outshine the log in the accent's colour.
const char PanelSheet[]
    = "QToolButton:checked { background-color: #3c3f43; border-color: #ff7707; color: #e6e6e6; }"
      "QToolButton[checkable=\"true\"]:!checked { background-color: transparent; color: #8a8f95; }"
      "QTableView::item:selected { background-color: #513c28; color: #ffffff; }";

} // namespace

LogPanel::LogPanel(CommunicationLog *log, QWidget *parent)
    : QWidget(parent)
    , m_log(log)
    , m_filter(new LogFilter(log, this))
    , m_view(new QTableView(this))
    , m_filterEdit(new QLineEdit(this))
{
    setStyleSheet(QLatin1String(PanelSheet));
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 6, 0, 0);
    column->setSpacing(6);
    column->addLayout(createToolRow());
    column->addWidget(m_view);
    setUpView();
    connect(m_filterEdit, &QLineEdit::textChanged, m_filter, &LogFilter::setText);
    // Once for all lines of one turn of the event loop: scrolling lays the whole view out.
    m_following.setSingleShot(true);
    connect(&m_following, &QTimer::timeout, this, &LogPanel::followIfWanted);
    connect(m_filter, &QAbstractItemModel::rowsInserted, &m_following, QOverload<>::of(&QTimer::start));
    connect(m_filter, &QAbstractItemModel::modelReset, this, &LogPanel::followIfWanted);
    connect(m_view->verticalScrollBar(), &QScrollBar::actionTriggered, this, [this] {
        const QScrollBar *bar = m_view->verticalScrollBar();
        m_follow->setChecked(bar->sliderPosition() == bar->maximum());
    });
}

void LogPanel::setUpView()
{
    m_view->setObjectName(QStringLiteral("logView"));
    m_view->setAccessibleName(tr("Communication log"));
    m_view->setModel(m_filter);
    m_view->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_view->setShowGrid(false);
    m_view->setWordWrap(false);
    m_view->setTabKeyNavigation(false);
    m_view->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_view->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_view->verticalHeader()->hide();
    m_view->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_view->verticalHeader()->setDefaultSectionSize(m_view->fontMetrics().height() + 6);
    m_view->horizontalHeader()->setStretchLastSection(true);
    m_view->horizontalHeader()->setHighlightSections(false);
    m_view->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    const int digit = m_view->fontMetrics().horizontalAdvance(QLatin1Char('0'));
    m_view->setColumnWidth(CommunicationLog::Time, 14 * digit + 12);
    m_view->setColumnWidth(CommunicationLog::Device, 12 * digit + 12);
    m_view->setColumnWidth(CommunicationLog::Source, 40);
}

QHBoxLayout *LogPanel::createToolRow()
{
    auto *row = new QHBoxLayout;
    auto *title = new QLabel(tr("Communication log"), this);
    QFont bold = title->font();
    bold.setBold(true);
    title->setFont(bold);
    row->addWidget(title);
    row->addSpacing(12);
    m_filterEdit->setObjectName(QStringLiteral("logFilter"));
    m_filterEdit->setPlaceholderText(tr("Filter, for example: usb -status"));
    m_filterEdit->setToolTip(tr("Show the lines that hold every word; -word hides lines (Ctrl+F)"));
    m_filterEdit->setClearButtonEnabled(true);
    // The style sheet gives the placeholder another colour than a text.
    connect(m_filterEdit, &QLineEdit::textChanged, m_filterEdit,
            [this] { m_filterEdit->style()->polish(m_filterEdit); });
    row->addWidget(m_filterEdit, 1);
    addSourceButton(row, tr("Sent"), tr("Show messages sent to devices"), {LogSource::Sent});
    addSourceButton(row, tr("Received"), tr("Show replies of devices"), {LogSource::Received});
    addSourceButton(row, tr("Notes"), tr("Show what plugins, host and simulator write"),
                    {LogSource::Plugin, LogSource::Host});
    row->addSpacing(12);
    m_follow = addButton(row, tr("Follow"), tr("Keep the newest line in view"));
    m_follow->setCheckable(true);
    m_follow->setChecked(true);
    connect(m_follow, &QToolButton::toggled, this, &LogPanel::followIfWanted);
    connect(addButton(row, tr("Copy"), tr("Copy the selected lines, or all shown ones (Ctrl+C in the log)")),
            &QToolButton::clicked, this, &LogPanel::copySelected);
    connect(addButton(row, tr("Save..."), tr("Save the shown lines to a file")), &QToolButton::clicked, this,
            &LogPanel::saveShown);
    connect(addButton(row, tr("Clear"), tr("Empty the log")), &QToolButton::clicked, m_log,
            &CommunicationLog::clear);
    return row;
}

QToolButton *LogPanel::addButton(QHBoxLayout *row, const QString &text, const QString &tip)
{
    auto *button = new QToolButton(this);
    button->setText(text);
    button->setToolTip(tip);
    row->addWidget(button);
    return button;
}

void LogPanel::addSourceButton(QHBoxLayout *row, const QString &text, const QString &tip,
                               const QList<LogSource> &sources)
{
    QToolButton *button = addButton(row, text, tip);
    button->setCheckable(true);
    button->setChecked(true);
    connect(button, &QToolButton::toggled, this, [this, sources](bool shown) {
        for (LogSource source : sources)
            m_filter->setSourceShown(source, shown);
        followIfWanted();
    });
}

void LogPanel::followIfWanted()
{
    if (m_follow->isChecked())
        m_view->scrollToBottom();
}

void LogPanel::focusFilter()
{
    m_filterEdit->setFocus(Qt::ShortcutFocusReason);
    m_filterEdit->selectAll();
}

void LogPanel::copySelected()
{
    QList<int> rows;
    for (const QModelIndex &index : m_view->selectionModel()->selectedRows())
        rows.append(index.row());
    std::sort(rows.begin(), rows.end());
    QGuiApplication::clipboard()->setText(rows.isEmpty() ? m_filter->allLines() : m_filter->linesOf(rows));
}

void LogPanel::saveShown()
{
    const QString path = QFileDialog::getSaveFileName(this, tr("Save Communication Log"),
                                                      QStringLiteral("communication.log"),
                                                      tr("Log files (*.log *.txt);;All files (*)"));
    if (path.isEmpty())
        return;
    const QString error = writeWholeFile(path, m_filter->allLines().toUtf8());
    if (error.isEmpty())
        emit saved(tr("The log was saved to %1.").arg(QDir::toNativeSeparators(path)));
    else
        emit problem(error);
}

} // namespace devhost
