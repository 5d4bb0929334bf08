#include "simulator/exit_signals.h"

#include <QAbstractNativeEventFilter>
#include <QCoreApplication>
#include <QWinEventNotifier>

// Before the headers that need it.
#include <windows.h>

#include <tlhelp32.h>

namespace sim {

namespace {

HANDLE exitEvent = nullptr;

/// The system calls it on a thread of its own. When a console is closed, the process lives only until this
/// returns; the event loop ends it before.
BOOL WINAPI passOn(DWORD type)
{
    SetEvent(exitEvent);
    if (type != CTRL_C_EVENT && type != CTRL_BREAK_EVENT)
        Sleep(INFINITE);
    return TRUE;
}

/// Null when this process has no parent any more.
HANDLE openParent()
{
    const HANDLE processes = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    PROCESSENTRY32W entry = {};
    entry.dwSize = sizeof entry;
    HANDLE parent = nullptr;
    for (BOOL more = Process32FirstW(processes, &entry); more; more = Process32NextW(processes, &entry)) {
        if (entry.th32ProcessID == GetCurrentProcessId())
            parent = OpenProcess(SYNCHRONIZE, FALSE, entry.th32ParentProcessID);
    }
    CloseHandle(processes);
    return parent;
}

} // namespace

class ExitSignals::System : public QAbstractNativeEventFilter
{
public:
    explicit System(ExitSignals *owner)
        : m_owner(owner)
        , m_exit(exitEvent = CreateEventW(nullptr, TRUE, FALSE, nullptr))
    {
        connectNotifier(&m_exit);
        qApp->installNativeEventFilter(this);
    }

    ~System() override
    {
        qApp->removeNativeEventFilter(this);
        m_exit.setEnabled(false);
        CloseHandle(exitEvent);
        if (!m_parentEnd)
            return;
        m_parentEnd->setEnabled(false);
        CloseHandle(m_parentEnd->handle());
    }

    void watchParent()
    {
        const HANDLE parent = openParent();
        if (!parent) {
            SetEvent(exitEvent);
            return;
        }
        m_parentEnd = std::make_unique<QWinEventNotifier>(parent);
        connectNotifier(m_parentEnd.get());
    }

    /// A parent process asks its children to close with a message to their threads and windows.
    bool nativeEventFilter(const QByteArray &, void *message, long *) override
    {
        if (static_cast<MSG *>(message)->message == WM_CLOSE)
            SetEvent(exitEvent);
        return false;
    }

private:
    void connectNotifier(QWinEventNotifier *notifier)
    {
        QObject::connect(notifier, &QWinEventNotifier::activated, m_owner, [this, notifier] {
            notifier->setEnabled(false);
            emit m_owner->exitRequested();
        });
    }

    ExitSignals *m_owner;
    QWinEventNotifier m_exit;
    std::unique_ptr<QWinEventNotifier> m_parentEnd;
};

ExitSignals::ExitSignals(QObject *parent)
    : QObject(parent)
    , m_system(new System(this))
{
    SetConsoleCtrlHandler(passOn, TRUE);
}

ExitSignals::~ExitSignals()
{
    SetConsoleCtrlHandler(passOn, FALSE);
}

/// The system knows the parent even when that has ended.
void ExitSignals::exitWithParent(uint)
{
    m_system->watchParent();
}

} // namespace sim
