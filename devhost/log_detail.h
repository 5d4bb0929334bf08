#pragma once

#include <QWidget>

class QAction;
class QHBoxLayout;
class QLabel;
class QPlainTextEdit;

namespace devhost {

class CommunicationLog;

/// One entry of the communication log with all of its text: a request and its reply, JSON indented. It
/// follows the entry, so that the reply comes in when the device answers.
class LogDetail : public QWidget
{
    Q_OBJECT

public:
    /// @p log is not owned.
    explicit LogDetail(const CommunicationLog *log, QWidget *parent = nullptr);

    /// Puts a button for @p action beside the heading.
    void addButton(QAction *action);
    /// @p number as in CommunicationLog.
    void show(qint64 number);
    /// The entry's number; -1 when none is shown.
    qint64 number() const { return m_number; }

private:
    void refresh();

    const CommunicationLog *m_log;
    qint64 m_number = -1;
    QHBoxLayout *m_top;
    QLabel *m_heading;
    QPlainTextEdit *m_text;
};

} // namespace devhost
