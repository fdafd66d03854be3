#include "platform/SystemMenu_p.h"

#include <windows.h>

const int Platform::MenuPressDelayMs = 100; // it is a separate message

void* Platform::systemMenu(WId window)
{
    return GetSystemMenu(reinterpret_cast<HWND>(window), FALSE);
}

bool Platform::enableMenuEntry(void* menu, unsigned int entry, MenuEntryState state)
{
    // Returns the entry's previous state, or -1 if there is no such entry.
    return EnableMenuItem(static_cast<HMENU>(menu), entry, MF_BYCOMMAND | state) != -1;
}

bool Platform::showSystemMenu(WId window, const QPoint& point)
{
    auto* const handle = reinterpret_cast<HWND>(window);
    auto* const menu = GetSystemMenu(handle, FALSE);
    if (!menu)
        return false;
    const int command =
        TrackPopupMenu(menu, TPM_RETURNCMD | TPM_LEFTBUTTON, point.x(), point.y(), 0, handle, nullptr);
    if (command != 0)
        PostMessageW(handle, WM_SYSCOMMAND, static_cast<WPARAM>(command), 0);
    return true;
}
