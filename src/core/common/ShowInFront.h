#pragma once

#include <QWidget>

/// Shows a window if it is hidden or minimised, brings it in front of others and gives it the focus. A maximised
/// window stays maximised. GUI thread only.
/// @param window a top-level widget; must not be null. The caller keeps ownership.
inline void showInFront(QWidget* window)
{
    window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
    window->show();
    window->raise();
    window->activateWindow();
}
