#pragma once

#include "ConnectionWatch.h"
#include "EventSounds.h"
#include "MessageWatch.h"
#include "PageNotice.h"
#include "support/DeviceEvents.h"

#include <map>

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

    /// Shows a notification on the desktop, unless the user does not want those of the event. It replaces the previous
    /// one of the event. A click on it shows the page of a plugin.
    /// @param event a key that EventSettings::isShown() knows; always shown if it does not, or is empty
    void showNotice(const QString& title, const QString& body, const QString& clsid, const QString& event);

    /// Unregisters from the device service.
    void stopListening() { m_deviceEvents.stop(); }

private:
    void checkMessages();
    void checkConnection();
    void report(const NewMessages& messages);

    DeviceEvents m_deviceEvents;
    EventSounds m_sounds;
    std::map<QString, PageNotice> m_notices; ///< by event
    ConnectionWatch m_connections;
    MessageWatch m_messages; ///< the last member: its thread ends before the others are deleted
};
