#pragma once

#include "DesktopNotification.h"
#include "MessageWatch.h"

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
    void showMainWindow();

    DesktopNotification m_notification;
};
