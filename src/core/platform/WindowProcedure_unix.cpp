#include "platform/WindowProcedure_p.h"

Platform::WindowProcedure Platform::windowProcedure(WId)
{
    return nullptr;
}

bool Platform::setMessageHandler(WId, MessageHandler)
{
    return false;
}

qintptr Platform::callWindowProcedure(WindowProcedure, WId, quint32, quintptr, qintptr)
{
    return 0;
}
