#pragma once

#include "skylume_global.h"

#include <QtPlugin>

/// The notification service, answered under PluginIds::NotifyStopService.
class SKYLUME_EXPORT INotifyService
{
public:
    virtual ~INotifyService();

    /// Tells every worker that listens to the service to finish soon. Returns without waiting for them.
    virtual void StopThreads() = 0;
};

Q_DECLARE_INTERFACE(INotifyService, "com.velquor.skylume.plugin.INotifyService")
