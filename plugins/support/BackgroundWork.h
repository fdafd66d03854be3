#pragma once

#include <QThread>

#include <atomic>

/// Work on a worker thread that ends in time when the application closes or the plugin is unloaded. It is
/// counted with CommonUtils::ThreadCountInc() and listens to the notification service (see INotifyService.h).
///
///     class Reader : public BackgroundWork
///     {
///         Q_OBJECT
///     public:
///         explicit Reader(QObject* parent) : BackgroundWork("reader", parent) {}
///         ~Reader() override { stop(); }
///     protected:
///         void work() override { while (!isInterruptionRequested()) readNext(); }
///     };
///
/// Every derived class must call stop() in its destructor. Call begin() and stop() on the GUI thread.
class BackgroundWork : public QThread
{
    Q_OBJECT

public:
    /// @param name describes the work in the log
    explicit BackgroundWork(const char* name, QObject* parent = nullptr);

    /// Starts the work; QThread::finished() is emitted when it is done. May be called again after that, but
    /// not while the work is running. Does nothing once the application is closing.
    void begin();

    /// Asks the work to finish and waits for it. Work that goes on for another 5 seconds is terminated; on
    /// Unix this takes effect at its next system call. Returns only when the thread has ended, because its
    /// code is about to be unloaded.
    ///
    /// While the application closes, work that is still running is logged as a warning with the names of its
    /// class and of the work: it has ignored the request of the notification service.
    void stop();

public Q_SLOTS:
    /// Asks the work to finish and returns immediately. Any thread.
    void finish() { requestInterruption(); }

protected:
    /// The work, on the worker thread. It must return soon after isInterruptionRequested() becomes true and must not
    /// call the plugin container, which is locked while plugins are unloaded. An exception is logged and ends the work.
    virtual void work() = 0;

private:
    void run() final;

    /// Once for each start, however the work ended: a worker that stays counted delays the shut-down.
    void countDown();

    const QString m_name;
    QString m_owner; ///< the derived class; in its destructor metaObject() no longer returns it
    std::atomic<bool> m_isCounted{false};
};
