#include "platform/SystemMenu_p.h"

const int Platform::MenuPressDelayMs = 0; // Qt delivers the press at once or never

void* Platform::systemMenu(WId)
{
    return nullptr;
}

bool Platform::enableMenuEntry(void*, unsigned int, MenuEntryState)
{
    return false;
}

bool Platform::showSystemMenu(WId, const QPoint&)
{
    return false;
}
