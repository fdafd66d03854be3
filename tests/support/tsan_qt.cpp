// Tells the thread sanitizer what Qt's locks, conditions and threads synchronise. Qt itself is not
// instrumented: the sanitizer sees neither its futexes nor the end of its threads, and would report everything
// that they guard.
//
// This library is preloaded. Its functions replace Qt's, call them, and annotate the synchronisation: one
// thread releases an address, and the next one acquires it.
#include <QDeadlineTimer>
#include <QMutex>
#include <QThread>
#include <QWaitCondition>

#include <dlfcn.h>

extern "C" {
__attribute__((weak)) void __tsan_acquire(void* address);
__attribute__((weak)) void __tsan_release(void* address);
}

namespace {

void acquire(const void* address)
{
    if (__tsan_acquire)
        __tsan_acquire(const_cast<void*>(address));
}

void release(const void* address)
{
    if (__tsan_release)
        __tsan_release(const_cast<void*>(address));
}

bool acquireIf(bool condition, const void* address)
{
    if (condition)
        acquire(address);
    return condition;
}

} // namespace

// Qt's own function with that mangled name; member functions take their object first.
#define QT_FUNCTION(name, ...)                                                                               \
    [] {                                                                                                     \
        static const auto function = reinterpret_cast<__VA_ARGS__>(dlsym(RTLD_NEXT, name));                  \
        return function;                                                                                     \
    }()

// ---- Locks

void QMutex::lock() noexcept
{
    QT_FUNCTION("_ZN6QMutex4lockEv", void (*)(QMutex*))(this);
    acquire(this);
}

bool QMutex::tryLock(int timeout) noexcept
{
    return acquireIf(QT_FUNCTION("_ZN6QMutex7tryLockEi", bool (*)(QMutex*, int))(this, timeout), this);
}

void QMutex::unlock() noexcept
{
    release(this);
    QT_FUNCTION("_ZN6QMutex6unlockEv", void (*)(QMutex*))(this);
}

// The slow paths of inline functions, whose fast paths are atomic operations in instrumented code.
void QBasicMutex::lockInternal() noexcept
{
    QT_FUNCTION("_ZN11QBasicMutex12lockInternalEv", void (*)(QBasicMutex*))(this);
    acquire(this);
}

void QBasicMutex::unlockInternal() noexcept
{
    release(this);
    QT_FUNCTION("_ZN11QBasicMutex14unlockInternalEv", void (*)(QBasicMutex*))(this);
}

// ---- Conditions and threads. ULONG_MAX milliseconds, which means for ever, become -1.

bool QWaitCondition::wait(QMutex* mutex, QDeadlineTimer deadline)
{
    release(mutex);
    const bool isWoken =
        QT_FUNCTION("_ZN14QWaitCondition4waitEP6QMutex14QDeadlineTimer",
                    bool (*)(QWaitCondition*, QMutex*, QDeadlineTimer))(this, mutex, deadline);
    acquire(mutex);
    return acquireIf(isWoken, this);
}

bool QWaitCondition::wait(QMutex* mutex, unsigned long milliseconds)
{
    return wait(mutex, QDeadlineTimer(qint64(milliseconds)));
}

void QWaitCondition::wakeAll()
{
    release(this);
    QT_FUNCTION("_ZN14QWaitCondition7wakeAllEv", void (*)(QWaitCondition*))(this);
}

// The sanitizer sees by itself how threads begin.

void QThread::start(Priority priority)
{
    connect(
        this, &QThread::finished, this, [this] { release(this); }, Qt::DirectConnection);
    QT_FUNCTION("_ZN7QThread5startENS_8PriorityE", void (*)(QThread*, Priority))(this, priority);
}

bool QThread::wait(QDeadlineTimer deadline)
{
    return acquireIf(
        QT_FUNCTION("_ZN7QThread4waitE14QDeadlineTimer", bool (*)(QThread*, QDeadlineTimer))(this, deadline),
        this);
}

bool QThread::wait(unsigned long milliseconds)
{
    return wait(QDeadlineTimer(qint64(milliseconds)));
}

bool QThread::isFinished() const
{
    return acquireIf(QT_FUNCTION("_ZNK7QThread10isFinishedEv", bool (*)(const QThread*))(this), this);
}

bool QThread::isRunning() const
{
    return !acquireIf(!QT_FUNCTION("_ZNK7QThread9isRunningEv", bool (*)(const QThread*))(this), this);
}
