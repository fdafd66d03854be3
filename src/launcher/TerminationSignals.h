#pragma once

#include <QObject>

/// While this object exists, requests to end the application (SIGINT, SIGTERM and SIGHUP on Unix, events of
/// the console on Windows) quit the event loop, so that the application shuts down as if the user had closed
/// it. A request before the event loop runs takes effect when the loop starts. A second request, on Unix of
/// the same kind, ends the process immediately.
///
/// Create one object per process, on the GUI thread.
class TerminationSignals : public QObject
{
public:
    TerminationSignals();
    ~TerminationSignals() override;
};
