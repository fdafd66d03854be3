#include "TerminationSignals.h"

#include <QCoreApplication>

#include <windows.h>

namespace {

// Windows ends the process as soon as the handler for a closing console returns. The handler runs on its own thread and
// waits there; usually the application exits meanwhile, after it has saved the settings. Windows allows it five seconds.
constexpr DWORD LongestWait = 5000;
LONG requests = 0;

BOOL WINAPI onConsoleEvent(DWORD type)
{
    if (InterlockedIncrement(&requests) > 1)
        return FALSE;
    QMetaObject::invokeMethod(QCoreApplication::instance(), &QCoreApplication::quit, Qt::QueuedConnection);
    if (type == CTRL_CLOSE_EVENT || type == CTRL_LOGOFF_EVENT || type == CTRL_SHUTDOWN_EVENT)
        Sleep(LongestWait);
    return TRUE;
}

} // namespace

TerminationSignals::TerminationSignals()
{
    SetConsoleCtrlHandler(onConsoleEvent, TRUE);
}

TerminationSignals::~TerminationSignals()
{
    SetConsoleCtrlHandler(onConsoleEvent, FALSE);
}
