#pragma once

#include "DesktopNotification.h"

/// A notification on the desktop that belongs to a page: a click on it brings the main window to the front with this
/// page. It is withdrawn after the click, and when the user comes back to the application. GUI thread.
class PageNotice : public QObject
{
    Q_OBJECT

public:
    PageNotice();

    /// Shows a notification; it replaces the previous one of this object.
    /// @param title, body plain text
    /// @param clsid       of the plugin that has the page
    /// @param category    as in DesktopNotification::show()
    void show(const QString& title, const QString& body, const QString& clsid, const char* category);

private:
    DesktopNotification m_notification;
    QString m_clsid;
};
