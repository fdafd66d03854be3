#pragma once

#include "PluginContainer/BasePlugin.h"
#include "PluginContainer/interfaces/INotifyService.h"
#include "support/SettingsPageBuilder.h"

#include <atomic>
#include <memory>

class Notifications;

/// The object that other plugins use, see INotifyService.h.
class Notifier : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool stopping READ isStopping NOTIFY stopRequested)

public:
    bool isStopping() const { return m_stopping; }

    /// Sets `stopping` and emits stopRequested(); further calls do nothing.
    void requestStop();

public Q_SLOTS:
    /// Emits soundRequested().
    void playSound(const QString& event) { Q_EMIT soundRequested(event); }

    /// Emits noticeRequested() with copies: the plugin that calls may be unloaded while its notice is shown, and its string
    /// literals with it.
    void showNotice(const QString& title, const QString& body, const QString& clsid,
                    const QString& event = {});

Q_SIGNALS:
    void stopRequested();
    void soundRequested(const QString& event);
    void noticeRequested(const QString& title, const QString& body, const QString& clsid,
                         const QString& event);

private:
    std::atomic<bool> m_stopping{false};
};

/// The notification service: asks the workers of all plugins to finish, and notifies the user of messages, calls and
/// lost connections.
class NotifyServicePlugin : public BasePlugin, public INotifyService
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.velquor.skylume.plugin.IBasePlugin")
    Q_INTERFACES(INotifyService)

public:
    NotifyServicePlugin();
    ~NotifyServicePlugin() override;

    int Init() override;

    void StopThreads() override;

    void UnSDKRegisterEvent() override;

    /// Asks the workers to finish if the application is closing: after this nobody else can.
    void Destroy() override;

private:
    Notifier m_notifier;
    SettingsPageBuilder m_pageBuilder;
    std::unique_ptr<Notifications> m_notifications; ///< from Init() to Destroy()
};
