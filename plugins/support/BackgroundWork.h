#pragma once

#include <QThread>

#include <atomic>

/// Work on a thread of its own that the closing application stops and waits for: it is counted among the
/// workers, and the notification service can tell it to finish.
///
/// Derived classes call stop() in their destructors. begin() and stop() are for the GUI thread.
class BackgroundWork : public QThread
{
    Q_OBJECT

public:
    /// @param name tells in the log what the work is
    explicit BackgroundWork(const char* name, QObject* parent = nullptr);

    /// Does the work, once more when it is done already; QThread::finished() tells when. While the
    /// application closes nothing begins any more. Not to be called while it is going on.
    void begin();

    /// Tells the work to finish and waits for that. Work that does not listen for 5 seconds is terminated,
    /// which on Unix takes effect with its next system call; until then there is no end to the wait, since
    /// the code that the thread runs is about to be unloaded.
    void stop();

public Q_SLOTS:
    /// Tells the work to finish. Any thread.
    void finish() { requestInterruption(); }

protected:
    /// The work. It ends soon once isInterruptionRequested(), throws nothing, and does not ask the plugin
    /// container, whose lock is held while plugins are unloaded.
    virtual void work() = 0;

private:
    void run() final;

    /// Once for each start, however the work ended: a worker that stays counted delays every later shut-down.
    void countDown();

    const QString m_name;
    QString m_owner; ///< the derived class; its destructor runs when stop() can no longer ask for it
    std::atomic<bool> m_isCounted{false};
};
