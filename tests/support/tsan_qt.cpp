// Tells the thread sanitizer what Qt's locks, conditions and threads order. Qt itself is not instrumented, so
// the sanitizer sees neither its futexes nor the end of its threads, and would report everything they guard.
//
// A library to be preloaded: its functions stand before Qt's, call them, and mark the hand-over. An address
// is released by whoever passes on what it did and acquired by whoever goes on from there.
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

/// Qt's own function of that mangled name; member functions take their object first.
template <typename Function>
Function* qtFunction(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

bool acquireIf(bool condition, const void* address)
{
    if (condition)
        acquire(address);
    return condition;
}

} // namespace

// ---- Locks

void QMutex::lock() noexcept
{
    static const auto lock = qtFunction<void(QMutex*)>("_ZN6QMutex4lockEv");
    lock(this);
    acquire(this);
}

bool QMutex::tryLock(int timeout) noexcept
{
    static const auto tryLock = qtFunction<bool(QMutex*, int)>("_ZN6QMutex7tryLockEi");
    return acquireIf(tryLock(this, timeout), this);
}

void QMutex::unlock() noexcept
{
    static const auto unlock = qtFunction<void(QMutex*)>("_ZN6QMutex6unlockEv");
    release(this);
    unlock(this);
}

// The slow paths of the inline functions; their fast paths are atomic operations in instrumented code.
void QBasicMutex::lockInternal() noexcept
{
    static const auto lock = qtFunction<void(QBasicMutex*)>("_ZN11QBasicMutex12lockInternalEv");
    lock(this);
    acquire(this);
}

bool QBasicMutex::lockInternal(int timeout) noexcept
{
    static const auto lock = qtFunction<bool(QBasicMutex*, int)>("_ZN11QBasicMutex12lockInternalEi");
    return acquireIf(lock(this, timeout), this);
}

void QBasicMutex::unlockInternal() noexcept
{
    static const auto unlock = qtFunction<void(QBasicMutex*)>("_ZN11QBasicMutex14unlockInternalEv");
    release(this);
    unlock(this);
}

// ---- Conditions

namespace {

template <typename Wait>
bool waitOn(const void* condition, const void* mutex, Wait wait)
{
    release(mutex);
    const bool isWoken = wait();
    acquire(mutex);
    return acquireIf(isWoken, condition);
}

} // namespace

bool QWaitCondition::wait(QMutex* mutex, QDeadlineTimer deadline)
{
    static const auto wait = qtFunction<bool(QWaitCondition*, QMutex*, QDeadlineTimer)>(
        "_ZN14QWaitCondition4waitEP6QMutex14QDeadlineTimer");
    return waitOn(this, mutex, [&] { return wait(this, mutex, deadline); });
}

bool QWaitCondition::wait(QMutex* mutex, unsigned long milliseconds)
{
    static const auto wait =
        qtFunction<bool(QWaitCondition*, QMutex*, unsigned long)>("_ZN14QWaitCondition4waitEP6QMutexm");
    return waitOn(this, mutex, [&] { return wait(this, mutex, milliseconds); });
}

void QWaitCondition::wakeOne()
{
    static const auto wake = qtFunction<void(QWaitCondition*)>("_ZN14QWaitCondition7wakeOneEv");
    release(this);
    wake(this);
}

void QWaitCondition::wakeAll()
{
    static const auto wake = qtFunction<void(QWaitCondition*)>("_ZN14QWaitCondition7wakeAllEv");
    release(this);
    wake(this);
}

// ---- Threads: the sanitizer sees their beginning by itself

void QThread::start(Priority priority)
{
    static const auto start = qtFunction<void(QThread*, Priority)>("_ZN7QThread5startENS_8PriorityE");
    connect(
        this, &QThread::finished, this, [this] { release(this); }, Qt::DirectConnection);
    start(this, priority);
}

bool QThread::wait(QDeadlineTimer deadline)
{
    static const auto wait = qtFunction<bool(QThread*, QDeadlineTimer)>("_ZN7QThread4waitE14QDeadlineTimer");
    return acquireIf(wait(this, deadline), this);
}

bool QThread::wait(unsigned long milliseconds)
{
    static const auto wait = qtFunction<bool(QThread*, unsigned long)>("_ZN7QThread4waitEm");
    return acquireIf(wait(this, milliseconds), this);
}

bool QThread::isFinished() const
{
    static const auto isFinished = qtFunction<bool(const QThread*)>("_ZNK7QThread10isFinishedEv");
    return acquireIf(isFinished(this), this);
}

bool QThread::isRunning() const
{
    static const auto isRunning = qtFunction<bool(const QThread*)>("_ZNK7QThread9isRunningEv");
    return !acquireIf(!isRunning(this), this);
}
