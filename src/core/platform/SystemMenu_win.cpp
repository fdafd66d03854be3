#include "platform/SystemMenu_p.h"

#include <windows.h>

void* Platform::systemMenu(WId window)
{
    return GetSystemMenu(reinterpret_cast<HWND>(window), FALSE);
}

bool Platform::enableMenuEntry(void* menu, unsigned int entry, MenuEntryState state)
{
    // The result is the entry's state before, all bits set when there is no such entry.
    return EnableMenuItem(static_cast<HMENU>(menu), entry, MF_BYCOMMAND | state) != -1;
}
