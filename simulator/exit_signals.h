#pragma once

#include <QObject>

#include <memory>

namespace sim {

/// Turns what the system ends programs with into a signal of the event loop, so that the program can put
/// things in order: SIGTERM and SIGINT, or a closed console, Ctrl+C and the message with which a parent
/// process ends its children on Windows. One object a process; one source file a system.
class ExitSignals : public QObject
{
    Q_OBJECT

public:
    explicit ExitSignals(QObject *parent = nullptr);
    ~ExitSignals() override;

    /// Asks for the exit as well when the parent process ends, however that ends. @p parent is its process
    /// id, with which one that has ended already is noticed; 0 when not known. Nothing where the system has
    /// no such service.
    void exitWithParent(uint parent);

signals:
    void exitRequested();

private:
    class System;
    std::unique_ptr<System> m_system;
};

} // namespace sim
