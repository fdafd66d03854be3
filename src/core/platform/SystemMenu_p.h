#pragma once

#include "skylume_global.h"

#include <QPoint>
#include <qwindowdefs.h>

/// The system menu of a window (Move, Restore, Minimize, Size, Maximize). It exists on Windows only.
namespace Platform {

/// How an entry is shown.
enum MenuEntryState : unsigned int {
    MenuEntryEnabled = 0,
    MenuEntryGreyed = 3, ///< greyed out and not selectable
};

/// The window's system menu. Call it on the GUI thread.
/// @param window native window of this process
/// @return a handle owned by the window; null when it has no system menu
SKYLUME_EXPORT void* systemMenu(WId window);

/// Sets the state of an entry. Call it on the GUI thread.
/// @param menu  a handle returned by systemMenu()
/// @param entry command of the entry, for example 0xF010 for Move
/// @return false when the menu has no such entry
SKYLUME_EXPORT bool enableMenuEntry(void* menu, unsigned int entry, MenuEntryState state);

/// How long after a menu has been closed the mouse press that closed it may still arrive, in milliseconds.
extern SKYLUME_EXPORT const int MenuPressDelayMs;

/// Opens a window's system menu, waits until it is closed, and posts the chosen command to the window. Call it
/// on the GUI thread.
/// @param point in screen coordinates
/// @return false when the window has no system menu
SKYLUME_EXPORT bool showSystemMenu(WId window, const QPoint& point);

} // namespace Platform
