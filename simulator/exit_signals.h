#pragma once

#include <QObject>
#include <QSocketNotifier>

namespace sim {

/// Turns SIGTERM and SIGINT into a signal of the event loop, so that the program can put things in order.
/// One object a process.
class ExitSignals : public QObject
{
    Q_OBJECT

public:
    explicit ExitSignals(QObject *parent = nullptr);
    ~ExitSignals() override;

signals:
    void exitRequested();

private:
    QScopedPointer<QSocketNotifier> m_notifier;
};

/// Has this process sent SIGTERM when its parent ends, however that ends. @p parent is its process id, with
/// which a parent that has ended already is noticed; 0 when not known. Nothing where the system has no such
/// service.
void exitWithParent(uint parent);

} // namespace sim
