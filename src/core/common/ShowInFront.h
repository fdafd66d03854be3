#pragma once

#include <QWidget>

/// Shows a window if it is hidden or minimised, in front of others, and gives it the focus. A maximised one stays so. GUI
/// thread only.
inline void showInFront(QWidget* window)
{
    window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
    window->show();
    window->raise();
    window->activateWindow();
}
