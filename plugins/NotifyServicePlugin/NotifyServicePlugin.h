#pragma once

#include "PluginContainer/BasePlugin.h"
#include "PluginContainer/interfaces/INotifyService.h"

#include <atomic>

/// The object that workers connect to, see INotifyService.h.
class StopNotifier : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool stopping READ isStopping NOTIFY stopRequested)

public:
    bool isStopping() const { return m_stopping; }

    /// Sets `stopping` and emits stopRequested(); further calls do nothing.
    void requestStop();

Q_SIGNALS:
    void stopRequested();

private:
    std::atomic<bool> m_stopping{false};
};

/// The notification service: asks the workers of all plugins to finish.
class NotifyServicePlugin : public BasePlugin, public INotifyService
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.velquor.skylume.plugin.IBasePlugin")
    Q_INTERFACES(INotifyService)

public:
    NotifyServicePlugin();

    void StopThreads() override;

    /// Also stops the workers if the application is closing, as nobody could do so afterwards.
    void Destroy() override;

private:
    StopNotifier m_notifier;
};
