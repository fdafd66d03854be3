#include "support/BackgroundWork.h"

#include "PluginContainer/IPluginContainer.h"
#include "PluginContainer/PluginIds.h"
#include "Startup/Startup.h"
#include "common/CommonUtils.h"

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
    start();
    if (notifier) // after the start: before it the request would be lost
        connect(notifier, SIGNAL(stopRequested()), this, SLOT(finish()),
                Qt::ConnectionType(Qt::DirectConnection | Qt::UniqueConnection));
}

void BackgroundWork::stop()
{
    finish();
    CommonUtils::WaitForThreadToStop(this, Patience);
    wait(); // also for the end of a terminated thread: its code is about to be unloaded
    countDown();
}

void BackgroundWork::run()
{
    m_owner = QString::fromLatin1(metaObject()->className());
    CommonUtils::ThreadCountInc(m_owner, m_name);
    m_isCounted = true;
    work();
    countDown();
}

void BackgroundWork::countDown()
{
    if (m_isCounted.exchange(false))
        CommonUtils::ThreadCountDec(m_owner, m_name);
}
