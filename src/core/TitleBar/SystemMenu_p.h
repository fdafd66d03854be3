#pragma once

#include "TitleBar/SystemMenuStates_p.h"

#include <QObject>

class QMenu;
class QPoint;
class TitleBar;

/// The menu behind a window's icon: the system's own if it has one, otherwise a QMenu with the same entries.
class SystemMenu : public QObject
{
    Q_OBJECT

public:
    explicit SystemMenu(TitleBar* titleBar);

    /// Sets the entries of the window's own menu of the system, if there is one.
    void setNativeStates(bool isMaximized);

    /// Sets the entries of a given menu of the system.
    static void setStates(void* menu, bool isMaximized);

    /// Opens the menu.
    /// @param point in screen coordinates
    void show(const QPoint& point, bool isMaximized);

Q_SIGNALS:
    void closed();

private:
    QMenu* makeMenu();
    void run(SystemMenuStates::Entry entry);

    TitleBar& m_titleBar;
    QMenu* m_menu = nullptr; ///< created on first use, owned by the title bar
};
