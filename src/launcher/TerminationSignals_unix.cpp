#include "TerminationSignals.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace {

// Hardly anything is allowed in a signal handler. It writes a byte to a pipe, which wakes the event loop.
int pipeEnds[2] = {-1, -1};
constexpr int HandledSignals[] = {SIGINT, SIGTERM, SIGHUP};

void onSignal(int)
{
    const int savedError = errno;
    const char byte = 1;
    (void)!write(pipeEnds[1], &byte, 1);
    errno = savedError;
}

bool openPipe()
{
    if (pipe(pipeEnds) != 0)
        return false;
    for (const int end : pipeEnds) {
        fcntl(end, F_SETFD, FD_CLOEXEC);
        fcntl(end, F_SETFL, O_NONBLOCK);
    }
    return true;
}

void handleSignals(void (*handler)(int), int flags)
{
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = flags;
    for (const int number : HandledSignals)
        sigaction(number, &action, nullptr);
}

} // namespace

TerminationSignals::TerminationSignals()
{
    if (!openPipe())
        return;
    auto* notifier = new QSocketNotifier(pipeEnds[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [notifier] {
        notifier->setEnabled(false);
        QCoreApplication::quit();
    });
    handleSignals(onSignal, SA_RESTART | int(SA_RESETHAND));
}

TerminationSignals::~TerminationSignals()
{
    if (pipeEnds[0] < 0)
        return;
    handleSignals(SIG_DFL, 0);
    for (int& end : pipeEnds) {
        close(end);
        end = -1;
    }
}
