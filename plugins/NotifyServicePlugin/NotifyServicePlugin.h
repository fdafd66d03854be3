#pragma once

#include "PluginContainer/BasePlugin.h"
#include "PluginContainer/interfaces/INotifyService.h"

#include <atomic>

/// What workers listen to, answered under PluginIds::FirstService as a plain QObject. A worker of another
/// plugin needs no header for it:
///
///     QObject* notifier = container->GetPlugin(PluginIds::NotifyService, PluginIds::FirstService);
///     connect(notifier, SIGNAL(stopRequested()), worker, SLOT(finish()), Qt::DirectConnection);
///     if (notifier->property("stopping").toBool())
///         return; // too late to begin
///
/// The signal is emitted once, on the thread that closes the application. The property may be read on any
/// thread; it is never reset.
class StopNotifier : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool stopping READ isStopping NOTIFY stopRequested)

public:
    bool isStopping() const { return m_stopping; }

    /// Sets the property and emits the signal; further calls do nothing.
    void requestStop();

Q_SIGNALS:
    void stopRequested();

private:
    std::atomic<bool> m_stopping{false};
};

/// The notification service: tells the workers of all plugins to finish.
class NotifyServicePlugin : public BasePlugin, public INotifyService
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.velquor.skylume.plugin.IBasePlugin")
    Q_INTERFACES(INotifyService)

public:
    NotifyServicePlugin();

    void StopThreads() override;

    /// While the application closes, also tells the workers: after this nobody will.
    void Destroy() override;

private:
    StopNotifier m_notifier;
};
