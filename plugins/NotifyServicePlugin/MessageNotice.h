#pragma once

#include "DesktopNotification.h"
#include "MessageWatch.h"

/// Brings the main window to the front with the page of a plugin, or with another if the plugin has none. GUI thread.
void showPage(const QString& clsid);

/// Shows messages on the desktop that arrive while the main window is hidden or minimised. A click on the notification
/// opens the page of messages. GUI thread.
class MessageNotice : public QObject
{
    Q_OBJECT

public:
    MessageNotice();

    /// Whether the user does not see the main window.
    static bool isNeeded();

    /// Shows a notification if it is needed.
    void show(const NewMessages& messages);

private:
    DesktopNotification m_notification;
};
