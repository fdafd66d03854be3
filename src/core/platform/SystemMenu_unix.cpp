#include "platform/SystemMenu_p.h"

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
