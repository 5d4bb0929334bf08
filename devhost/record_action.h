#pragma once

#include <QAction>

namespace devhost {

class Host;
class WindowMemory;

/// Starts and ends the recording of a session, and shows whether one is being made.
class RecordAction : public QAction
{
    Q_OBJECT

public:
    /// Neither is owned; the folder of the last recording is remembered.
    RecordAction(Host *host, WindowMemory *memory, QWidget *window);

private:
    void change(bool on);
    /// Empty when the user thought better of it.
    QString askForFile() const;
    void refresh();

    Host *m_host;
    WindowMemory *m_memory;
    QWidget *m_window;
};

} // namespace devhost
