#include "NotifyServicePlugin.h"

#include "Notifications.h"
#include "NotificationsPage.h"
#include "PluginContainer/PluginIds.h"
#include "common/CommonUtils.h"

namespace {

QString copied(const QString& text)
{
    return QString(text.constData(), text.size());
}

} // namespace

void Notifier::requestStop()
{
    if (!m_stopping.exchange(true))
        Q_EMIT stopRequested();
}

void Notifier::showNotice(const QString& title, const QString& body, const QString& clsid,
                          const QString& event)
{
    Q_EMIT noticeRequested(copied(title), copied(body), copied(clsid), copied(event));
}

NotifyServicePlugin::NotifyServicePlugin()
{
    publish(PluginIds::NotifyStopService, this);
    publish(PluginIds::FirstService, &m_notifier);
    publish(PluginIds::SettingsPage, &m_pageBuilder);
}

NotifyServicePlugin::~NotifyServicePlugin() = default;

int NotifyServicePlugin::Init()
{
    m_notifications = std::make_unique<Notifications>();
    connect(&m_notifier, &Notifier::soundRequested, m_notifications.get(), &Notifications::playSound);
    connect(&m_notifier, &Notifier::noticeRequested, m_notifications.get(), &Notifications::showNotice);
    m_pageBuilder.start(
        [this](QWidget* parent) { return new NotificationsPage(m_notifications->sounds(), parent); });
    return BasePlugin::Init();
}

void NotifyServicePlugin::StopThreads()
{
    m_notifier.requestStop();
}

void NotifyServicePlugin::UnSDKRegisterEvent()
{
    if (m_notifications)
        m_notifications->stopListening();
}

void NotifyServicePlugin::Destroy()
{
    if (CommonUtils::IsShuttingDown())
        StopThreads();
    m_pageBuilder.stop();
    m_notifications.reset();
}
