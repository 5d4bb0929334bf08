#pragma once

#include "devhost/log_filter.h"

#include <QSet>
#include <QTimer>
#include <QWidget>

class QAction;
class QComboBox;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QTableView;
class QToolButton;

namespace devhost {

class LogDetail;
class MessageBar;
class RequestWatch;
class SeenPaths;
class WindowMemory;

/// The communication log on screen: what of it is shown, the whole of a message, how devices answer, and
/// copying and saving.
class LogPanel : public QWidget
{
    Q_OBJECT

public:
    /// None is owned; @p requests counts what the figures tell, and the folder of the last saved log is
    /// remembered.
    LogPanel(CommunicationLog *log, const RequestWatch *requests, WindowMemory *memory,
             QWidget *parent = nullptr);

    void focusFilter();
    void focusMessage();
    /// The device that the user's messages go to; empty when there is none.
    void setTarget(const QString &deviceName);
    /// Shows what becomes of the entry of that number; of none when it is negative.
    void showSent(qint64 number);
    void copySelected();
    /// Puts a button for @p action below the log; not owned.
    void addTool(QAction *action);
    /// Asks for a file and writes the shown entries into it, as JSON lines if its name ends in ".jsonl".
    void saveShown();

signals:
    /// A sentence for the user.
    void problem(const QString &sentence);
    void saved(const QString &sentence);
    /// The user has a message for a device; showSent() is to follow.
    void sendRequested(const QString &deviceName, const QByteArray &message);

private:
    void setUpView();
    void setUpFollowing();

    // Tools (log_panel_tools.cpp)
    QHBoxLayout *createFilterRow();
    QHBoxLayout *createBottomRow();
    QToolButton *addButton(QHBoxLayout *row, const QString &text, const QString &tip);
    QToolButton *addSwitch(QHBoxLayout *row, const QString &name, const QString &text, const QString &tip,
                           bool on);
    void addShownSwitch(QHBoxLayout *row, LogFilter::Kind kind, const QString &name, const QString &text,
                        const QString &tip);
    void followIfWanted();
    void showChosen();
    void choose(qint64 number);
    void noteNews(int first, int last);
    void showFigures();
    void setUpActions();
    QAction *addAction(const QString &text, const QKeySequence &keys, const QString &tip);
    void handleChange(qint64 number);
    /// Selects the row of an entry, or none while the filter leaves it out.
    void markRow(qint64 number);
    /// Null when none is chosen, or the chosen one is no request.
    const LogEntry *chosenRequest() const;
    QList<int> selectedRows() const;

    CommunicationLog *m_log;
    const RequestWatch *m_requests;
    WindowMemory *m_memory;
    LogFilter *m_filter;
    QTableView *m_view;
    LogDetail *m_detail;
    SeenPaths *m_paths;
    MessageBar *m_message;
    qint64 m_sent = -1; ///< the last message from the message box
    QAction *m_sendAgain = nullptr;
    QAction *m_edit = nullptr;
    QLineEdit *m_filterEdit;
    QComboBox *m_devices;
    QLabel *m_figures;
    QHBoxLayout *m_tools = nullptr;
    QToolButton *m_follow = nullptr;
    QToolButton *m_details = nullptr;
    QSet<QString> m_knownDevices;
    QTimer m_following;
};

} // namespace devhost
