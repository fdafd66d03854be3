#pragma once

#include <QThread>

/// Work on a thread of its own that the closing application stops and waits for: it is counted among the
/// workers, and the notification service can tell it to finish.
///
/// Derived classes call stop() in their destructors.
class BackgroundWork : public QThread
{
    Q_OBJECT

public:
    /// @param name tells in the log what the work is
    explicit BackgroundWork(const char* name, QObject* parent = nullptr);

    /// Does the work, once more when it is done already; QThread::finished() tells when. While the
    /// application closes nothing begins any more. Not to be called while it is going on.
    void begin();

    /// Tells the work to finish and waits for that. Work that does not listen for 5 seconds is terminated.
    void stop();

public Q_SLOTS:
    /// Tells the work to finish. Any thread.
    void finish() { requestInterruption(); }

protected:
    /// The work. It ends soon once isInterruptionRequested().
    virtual void work() = 0;

private:
    void run() final;

    const QString m_name;
};
