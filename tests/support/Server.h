#pragma once

#include <QProcess>
#include <QTemporaryDir>

#include <csignal>

/// A program that runs as long as this object, even if the test crashes.
class Server : public QProcess
{
public:
    explicit Server(const QStringList& command = {})
    {
        if (!command.isEmpty())
            run(command);
    }
    ~Server() override
    {
        terminate();
        waitForFinished();
    }

    void run(const QStringList& command) { start("setpriv", QStringList("--pdeathsig=KILL") + command); }

    /// Ends it as if it had crashed.
    void crash()
    {
        kill();
        waitForFinished();
    }

    /// While it is halted, it answers nothing.
    void halt(bool isHalted) { ::kill(pid_t(processId()), isHalted ? SIGSTOP : SIGCONT); }
};
