#include "Notifications.h"

#include "MessageNotice.h"
#include "common/CommonUtils.h"
#include "support/Clsids.h"
#include "support/Text.h"

#include <QGuiApplication>
#include <QWidget>

namespace {

bool isWindowHidden()
{
    const QWidget* const window = CommonUtils::GetMainWindow();
    return window && (!window->isVisible() || window->isMinimized());
}

/// New messages are shown on the desktop only while the main window does not show them.
bool isMessageNoticeNeeded()
{
    return isWindowHidden() && EventSettings::isShown(EventSettings::key(Event::Message));
}

/// Users who are looking at the application can see there that a connection is lost, and have often caused it.
bool isConnectionNoticeNeeded()
{
    return isWindowHidden() || QGuiApplication::applicationState() != Qt::ApplicationActive;
}

/// What the event is for the desktop, in the words of DesktopNotification::show().
const char* categoryOf(const QString& event)
{
    if (event == EventSettings::key(Event::Message))
        return "im.received";
    return event == EventSettings::key(Event::ConnectionLost) ? "network.disconnected" : "device";
}

} // namespace

Notifications::Notifications()
{
    connect(&m_messages, &MessageWatch::arrived, this, &Notifications::report);
    connect(&m_deviceEvents, &DeviceEvents::messagesChanged, this, &Notifications::checkMessages);
    connect(&m_deviceEvents, &DeviceEvents::statusChanged, this, &Notifications::checkConnection);
    connect(&m_deviceEvents, &DeviceEvents::changed, this, [this] {
        checkConnection();
        checkMessages(); // takes note of what a new modem holds
    });
    m_deviceEvents.listen();
    m_connections.look();
    // Not from here: a worker asks the container for this plugin, which is being initialised.
    QMetaObject::invokeMethod(this, &Notifications::checkMessages, Qt::QueuedConnection);
}

void Notifications::playSound(const QString& key)
{
    for (const Event event : AllEvents) {
        if (EventSettings::key(event) == key)
            m_sounds.play(event);
    }
}

void Notifications::showNotice(const QString& title, const QString& body, const QString& clsid,
                               const QString& event)
{
    if (EventSettings::isShown(event))
        m_notices[event].show(title, body, clsid, categoryOf(event));
}

void Notifications::checkMessages()
{
    m_messages.check(isMessageNoticeNeeded());
}

void Notifications::checkConnection()
{
    const ConnectionLoss loss = m_connections.look();
    if (loss.isAny)
        m_sounds.play(Event::ConnectionLost);
    if (loss.offline.isEmpty() || !isConnectionNoticeNeeded())
        return;
    showNotice(text("IDS_NOTIFY_LOST"),
               text("IDS_NOTIFY_OFFLINE").arg(loss.offline.join(QLatin1String(", "))), Clsids::Connection,
               EventSettings::key(Event::ConnectionLost));
}

void Notifications::report(const NewMessages& messages)
{
    m_sounds.play(Event::Message);
    if (!isMessageNoticeNeeded())
        return;
    const MessageNotice notice(messages, EventSettings::isShown(EventSettings::MessageText));
    showNotice(notice.title, notice.body, Clsids::Messages, EventSettings::key(Event::Message));
}
