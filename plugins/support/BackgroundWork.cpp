#include "support/BackgroundWork.h"

#include "PluginContainer/IPluginContainer.h"
#include "PluginContainer/PluginIds.h"
#include "Startup/Startup.h"
#include "common/CommonUtils.h"
#include "common/GuardedCall.h"
#include "common/Log.h"
#include "support/Text.h"

namespace {

constexpr unsigned int Patience = 5; // seconds

} // namespace

BackgroundWork::BackgroundWork(const char* name, QObject* parent)
    : QThread(parent)
    , m_name(QString::fromLatin1(name))
{
}

void BackgroundWork::begin()
{
    if (CommonUtils::IsShuttingDown())
        return;
    IPluginContainer* const container = Startup::GetPluginContainer();
    QObject* const notifier =
        container ? container->GetPlugin(PluginIds::NotifyService, PluginIds::FirstService) : nullptr;
    if (notifier && notifier->property("stopping").toBool())
        return;
    m_owner = QString::fromLatin1(metaObject()->className());
    start();
    if (notifier) // after start(), which resets the request for interruption
        connect(notifier, SIGNAL(stopRequested()), this, SLOT(finish()),
                Qt::ConnectionType(Qt::DirectConnection | Qt::UniqueConnection));
}

void BackgroundWork::stop()
{
    if (isRunning() && CommonUtils::IsShuttingDown())
        LOG_WARNING("%s: %s: worker %s: %s has not ended in time", LOG_FILE, LOG_FUNCTION,
                    qUtf8Printable(m_owner), qUtf8Printable(m_name));
    finish();
    CommonUtils::WaitForThreadToStop(this, Patience);
    wait(); // for a terminated thread, too: its code is about to be unloaded
    countDown();
}

void BackgroundWork::run()
{
    CommonUtils::ThreadCountInc(m_owner, m_name);
    m_isCounted = true;
    guardedCall("work", thisPlugin(), [this] { work(); });
    countDown();
}

void BackgroundWork::countDown()
{
    if (m_isCounted.exchange(false))
        CommonUtils::ThreadCountDec(m_owner, m_name);
}
