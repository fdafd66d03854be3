#pragma once

#include "TrayState.h"

#include <QObject>

class QMenu;
class QSystemTrayIcon;

/// The icon in the desktop's notification area: signal and state of the modem in use. It appears as soon as the desktop has
/// such an area, which can be later than the application when both start with the session.
class TrayIcon : public QObject
{
    Q_OBJECT

public:
    explicit TrayIcon(QObject* parent);

    /// Whether the user can reach the icon.
    bool isShown() const;

    /// @param menu owned by the caller; null for none
    void setMenu(QMenu* menu);

    void showStatus(const TrayStatus& status);

    /// Shows the icon again after all windows of the application have been hidden: on some desktops it is one of them.
    void keepShown();

    /// Shows a notification at the icon.
    void notify(const QString& title, const QString& body);

Q_SIGNALS:
    void clicked();

private:
    QSystemTrayIcon* m_icon;
};
