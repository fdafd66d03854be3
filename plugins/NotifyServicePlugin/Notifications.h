#pragma once

#include "ConnectionWatch.h"
#include "EventSounds.h"
#include "MessageNotice.h"
#include "MessageWatch.h"
#include "support/DeviceEvents.h"

/// Plays sounds and shows notifications for messages, calls and lost connections as long as it exists. GUI thread.
class Notifications : public QObject
{
    Q_OBJECT

public:
    Notifications();

    EventSounds& sounds() { return m_sounds; }

    /// Plays the sound of an event.
    /// @param key EventSettings::key() of the event; others are ignored
    void playSound(const QString& key);

    /// Shows a notification on the desktop; a click on it shows the page of a plugin.
    void showNotice(const QString& title, const QString& body, const QString& clsid);

    /// Unregisters from the device service.
    void stopListening() { m_deviceEvents.stop(); }

private:
    void checkMessages();
    void checkConnection();
    void report(const NewMessages& messages);

    DeviceEvents m_deviceEvents;
    EventSounds m_sounds;
    MessageNotice m_messageNotice;
    DesktopNotification m_notice;
    QString m_noticeClsid; ///< of the plugin whose page a click on m_notice shows
    ConnectionWatch m_connections;
    MessageWatch m_messages; ///< the last member: its thread ends before the others are deleted
};
