#include "NotifyServicePlugin.h"

#include "Notifications.h"
#include "PluginContainer/PluginIds.h"
#include "SoundsPage.h"
#include "common/CommonUtils.h"

#include <QRect>

void Notifier::requestStop()
{
    if (!m_stopping.exchange(true))
        Q_EMIT stopRequested();
}

SettingsPageBuilder::~SettingsPageBuilder()
{
    delete m_page;
}

QWidget* SettingsPageBuilder::BuildFrame(QWidget* parent, const QRect& geometry)
{
    delete m_page;
    if (!m_notifications)
        return nullptr;
    m_page = new SoundsPage(m_notifications->sounds(), parent);
    if (!geometry.isNull())
        m_page->setGeometry(geometry);
    return m_page;
}

void SettingsPageBuilder::setNotifications(Notifications* notifications)
{
    m_notifications = notifications;
    if (!notifications)
        delete m_page;
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
    m_pageBuilder.setNotifications(m_notifications.get());
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
    m_pageBuilder.setNotifications(nullptr);
    m_notifications.reset();
}
