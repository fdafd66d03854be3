#include "Notifications.h"

Notifications::Notifications()
{
    connect(&m_messages, &MessageWatch::arrived, this, &Notifications::report);
    connect(&m_deviceEvents, &DeviceEvents::messagesChanged, this, &Notifications::checkMessages);
    connect(&m_deviceEvents, &DeviceEvents::statusChanged, this, &Notifications::checkConnection);
    connect(&m_deviceEvents, &DeviceEvents::changed, this, [this] {
        checkConnection();
        checkMessages(); // takes note of what a new modem holds
    });
    connect(&m_notice, &DesktopNotification::activated, this, [this] {
        m_notice.close();
        showPage(m_noticeClsid);
    });
    m_deviceEvents.listen();
    m_connections.hasLostOne();
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

void Notifications::showNotice(const QString& title, const QString& body, const QString& clsid)
{
    m_noticeClsid = clsid;
    m_notice.show(title, body, "device");
}

void Notifications::checkMessages()
{
    m_messages.check(MessageNotice::isNeeded());
}

void Notifications::checkConnection()
{
    if (m_connections.hasLostOne())
        m_sounds.play(Event::ConnectionLost);
}

void Notifications::report(const NewMessages& messages)
{
    m_sounds.play(Event::Message);
    m_messageNotice.show(messages);
}
