#include "platform/LanguageId_p.h"

#include <windows.h>

quint16 Platform::systemLanguageId()
{
    return GetSystemDefaultLangID();
}

quint16 Platform::userLanguageId()
{
    return GetUserDefaultLangID();
}
