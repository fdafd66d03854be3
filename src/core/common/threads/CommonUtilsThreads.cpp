#include "common/CommonUtils.h"

#include "PluginContainer/IPluginContainer.h"
#include "PluginContainer/PluginIds.h"
#include "PluginContainer/interfaces/INotifyService.h"
#include "Startup/Startup.h"
#include "common/GuardedCall.h"
#include "common/Log.h"

#include <QMutex>
#include <QMutexLocker>
#include <QObject>
#include <QThread>
#include <QWaitCondition>

#include <algorithm>
#include <atomic>
#include <climits>

namespace {

// The limit applies to all calls of WaitThreadsStop() in the process together.
constexpr int MaxWaitRounds = 20;
constexpr unsigned long RoundMilliseconds = 500;

// Atomic because WaitThreadsStop() tests them without the mutex.
std::atomic<int> threadCount{0};
std::atomic<int> waitRounds{0};

// Never destroyed: workers that were not waited for may end while the process exits.
QMutex& threadCountMutex = *new QMutex; ///< guards changes of the count and the wait for them
QWaitCondition& ThreadFinished = *new QWaitCondition;

void requestStop(IPluginContainer* container, const char* function)
{
    QObject* const plugin = container->GetPlugin(PluginIds::NotifyService, PluginIds::NotifyStopService);
    auto* const service = qobject_cast<INotifyService*>(plugin);
    if (!service)
        return;
    LOG_DEBUG("%s: %s: stop thread called", LOG_FILE, function);
    guardedCall("StopThreads", QStringLiteral("notification service"), [service] { service->StopThreads(); });
}

} // namespace

void CommonUtils::ThreadCountInc(QString owner, QString name)
{
    const QMutexLocker locker(&threadCountMutex);
    const int count = ++threadCount;
    LOG_WARNING("%s: %s: %s:threadCount is %d; thread: %s: %s", LOG_TIME, LOG_FILE, LOG_FUNCTION, count,
                qUtf8Printable(owner), qUtf8Printable(name));
}

int CommonUtils::ThreadCountDec(QString owner, QString name)
{
    const QMutexLocker locker(&threadCountMutex);
    const int count = --threadCount;
    LOG_WARNING("%s: %s: %s: threadCount is %d; thread: %s: %s", LOG_TIME, LOG_FILE, LOG_FUNCTION, count,
                qUtf8Printable(owner), qUtf8Printable(name));
    if (count < 1) {
        LOG_WARNING("%s: %s: %s:ThreadFinished.wakeAll();", LOG_TIME, LOG_FILE, LOG_FUNCTION);
        ThreadFinished.wakeAll();
    }
    return count;
}

void CommonUtils::WaitThreadsStop()
{
    IPluginContainer* const container = Startup::GetPluginContainer();
    if (!container) {
        LOG_DEBUG("%s: %s: Startup::GetPluginContainer failed", LOG_FILE, LOG_FUNCTION);
        return;
    }
    requestStop(container, LOG_FUNCTION);
    while (threadCount > 0 && waitRounds < MaxWaitRounds) {
        const QMutexLocker locker(&threadCountMutex);
        LOG_WARNING("%s: %s: %s: start ThreadFinished.wait", LOG_TIME, LOG_FILE, LOG_FUNCTION);
        ThreadFinished.wait(&threadCountMutex, RoundMilliseconds);
        ++waitRounds;
    }
    LOG_WARNING("%s: %s: %s: end ThreadFinished.wait", LOG_TIME, LOG_FILE, LOG_FUNCTION);
}

void CommonUtils::WaitForThreadToStop(QThread* thread, unsigned int unMaxWait)
{
    LOG_DEBUG("%s: %s: %s: Enter. unMaxWait: %u", LOG_TIME, LOG_FILE, LOG_FUNCTION, unMaxWait);
    if (!thread)
        return;
    thread->quit();
    if (thread->isRunning())
        thread->wait(static_cast<unsigned long>(std::min<quint64>(quint64(unMaxWait) * 1000, ULONG_MAX)));
    if (thread->isRunning())
        thread->terminate();
    LOG_DEBUG("%s: %s: %s: Leave ", LOG_TIME, LOG_FILE, LOG_FUNCTION);
}
