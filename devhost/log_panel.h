#pragma once

#include "devhost/communication_log.h"

#include <QTimer>
#include <QWidget>

class QHBoxLayout;
class QLineEdit;
class QTableView;
class QToolButton;

namespace devhost {

class LogFilter;

/// The communication log on screen: filter, choice of sources, follow, copy, save and clear.
class LogPanel : public QWidget
{
    Q_OBJECT

public:
    /// @p log is not owned.
    explicit LogPanel(CommunicationLog *log, QWidget *parent = nullptr);

    void focusFilter();
    void copySelected();
    /// Asks for a file and writes the shown lines into it.
    void saveShown();

signals:
    /// A sentence for the user.
    void problem(const QString &sentence);
    void saved(const QString &sentence);

private:
    void setUpView();
    QHBoxLayout *createToolRow();
    void addSourceButton(QHBoxLayout *row, const QString &text, const QString &tip,
                         const QList<LogSource> &sources);
    QToolButton *addButton(QHBoxLayout *row, const QString &text, const QString &tip);
    void followIfWanted();

    CommunicationLog *m_log;
    LogFilter *m_filter;
    QTableView *m_view;
    QLineEdit *m_filterEdit;
    QToolButton *m_follow = nullptr;
    QTimer m_following;
};

} // namespace devhost
