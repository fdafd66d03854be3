#pragma once

#include "skylume_global.h"

#include <QPoint>
#include <qwindowdefs.h>

/// The menu that the system gives a window: Move, Restore, Minimize, Size, Maximize. Only Windows has one.
namespace Platform {

/// How an entry is shown.
enum MenuEntryState : unsigned int {
    MenuEntryEnabled = 0,
    MenuEntryGreyed = 3, ///< grey and not selectable
};

/// The window's system menu, its own copy and not a new one.
/// @param window native window of this process
/// @return the menu's handle, owned by the window; null when it has none, and on systems without such menus.
/// GUI thread.
SKYLUME_EXPORT void* systemMenu(WId window);

/// Sets the state of an entry.
/// @param menu  a handle of systemMenu()
/// @param entry command of the entry, for example 0xF010 for Move
/// @param state a MenuEntryState
/// @return false when the menu has no such entry, and on systems without such menus. GUI thread.
SKYLUME_EXPORT bool enableMenuEntry(void* menu, unsigned int entry, MenuEntryState state);

/// Opens a window's system menu, waits until it is closed, and sends the chosen command to the window.
/// @param point in screen coordinates
/// @return false when the window has no such menu, as on systems without them. GUI thread.
SKYLUME_EXPORT bool showSystemMenu(WId window, const QPoint& point);

} // namespace Platform
