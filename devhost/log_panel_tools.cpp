// The rows of tools above and below the log.

#include "devhost/log_detail.h"
#include "devhost/log_panel.h"
#include "devhost/request_watch.h"
#include "devhost/window_memory.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QStyle>
#include <QToolButton>

namespace devhost {

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
    m_tools = row;
    m_figures->setObjectName(QStringLiteral("logFigures"));
    m_figures->setAccessibleName(tr("How devices answer"));
    m_figures->setTextFormat(Qt::PlainText);
    m_figures->setProperty("role", QStringLiteral("caption"));
    m_figures->setMinimumWidth(1);
    row->addWidget(m_figures, 1);
    connect(m_requests, &RequestWatch::figuresChanged, this, &LogPanel::showFigures);
    showFigures();
    m_details = addSwitch(row, QStringLiteral("logDetails"), tr("Details"),
                          tr("Show the whole text of the chosen message"), true);
    connect(m_details, &QToolButton::toggled, m_detail, &QWidget::setVisible);
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

void LogPanel::addTool(QAction *action)
{
    auto *button = new QToolButton(this);
    button->setDefaultAction(action);
    button->setFocusPolicy(Qt::StrongFocus);
    m_tools->insertWidget(m_tools->count() - 1, button);
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

} // namespace devhost
