#include "NotifyServicePlugin.h"

#include "PluginContainer/PluginIds.h"
#include "common/CommonUtils.h"

void StopNotifier::requestStop()
{
    if (!m_stopping.exchange(true))
        Q_EMIT stopRequested();
}

NotifyServicePlugin::NotifyServicePlugin()
{
    publish(PluginIds::NotifyStopService, this);
    publish(PluginIds::FirstService, &m_notifier);
}

void NotifyServicePlugin::StopThreads()
{
    m_notifier.requestStop();
}

void NotifyServicePlugin::Destroy()
{
    if (CommonUtils::IsShuttingDown())
        StopThreads();
}
