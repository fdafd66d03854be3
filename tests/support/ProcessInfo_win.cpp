#include "ProcessInfo.h"

#include <qt_windows.h>

bool isLibraryInMemory(const QString& fileName)
{
    return GetModuleHandleW(reinterpret_cast<const wchar_t*>(fileName.utf16())) != nullptr;
}
