#include "simulator/exit_signals.h"

#include <QSocketNotifier>

#include <csignal>
#include <sys/socket.h>
#include <unistd.h>

#ifdef Q_OS_LINUX
#include <sys/prctl.h>
#endif

namespace sim {

namespace {

// A signal handler may do little more than write to a descriptor; the event loop reads at the other end.
int handlerEnd = -1;
int loopEnd = -1;

void passOn(int)
{
    const char byte = 1;
    if (write(handlerEnd, &byte, sizeof byte) < 0)
        _exit(1);
}

int openedLoopEnd()
{
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_STREAM, 0, ends) != 0)
        qFatal("no socket pair for the exit signals");
    handlerEnd = ends[0];
    loopEnd = ends[1];
    return loopEnd;
}

} // namespace

class ExitSignals::System
{
public:
    QSocketNotifier notifier{openedLoopEnd(), QSocketNotifier::Read};
};

ExitSignals::ExitSignals(QObject *parent)
    : QObject(parent)
    , m_system(new System)
{
    connect(&m_system->notifier, &QSocketNotifier::activated, this, [this] {
        m_system->notifier.setEnabled(false);
        emit exitRequested();
    });
    std::signal(SIGPIPE, SIG_IGN); // a reader that has gone is no reason to end
    std::signal(SIGTERM, passOn);
    std::signal(SIGINT, passOn);
}

ExitSignals::~ExitSignals()
{
    std::signal(SIGTERM, SIG_DFL);
    std::signal(SIGINT, SIG_DFL);
    m_system.reset(); // it watches one of the ends
    close(handlerEnd);
    close(loopEnd);
}

void ExitSignals::exitWithParent(uint parent)
{
#ifdef Q_OS_LINUX
    const pid_t expected = parent > 0 ? pid_t(parent) : getppid();
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (getppid() != expected) // it ended before the request
        raise(SIGTERM);
#else
    Q_UNUSED(parent)
#endif
}

} // namespace sim
