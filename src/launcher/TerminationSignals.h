#pragma once

#include <QObject>

/// While it exists, requests of the system to end the application (SIGINT, SIGTERM and SIGHUP on Unix, a
/// closing console on Windows) quit the event loop, so that the application closes as if the user had closed
/// it. A request that comes before the event loop runs is kept until then. A second one of the same kind ends
/// the process at once.
///
/// One object per process, made on the GUI thread.
class TerminationSignals : public QObject
{
public:
    TerminationSignals();
    ~TerminationSignals() override;
};
