#include "platform/Platform.h"

#include <QDir>
#include <QtGlobal>

#include <qt_windows.h>

// Callers of the C interface rely on this when they pass wide strings and results.
static_assert(sizeof(wchar_t) == sizeof(char16_t) && sizeof(long) == 4);

// The roaming folder, so that settings follow the user. Qt's generic location is the local folder.
QString Platform::userConfigFolder()
{
    const QString folder = QDir::fromNativeSeparators(qEnvironmentVariable("APPDATA"));
    return folder.isEmpty() ? QDir::homePath() + QStringLiteral("/AppData/Roaming") : folder;
}

bool Platform::syncFolder(const QString&)
{
    return true; // the file system keeps a journal of names
}

// Functions that a library passes to atexit() are called when the library is detached. When a process ends,
// the system has terminated all other threads by then, perhaps in the middle of a write. Functions in the C
// runtime's own list are called before that.
void Platform::atExit(void (*function)())
{
    using Register = void* (*)(void (*)());
    const HMODULE runtime = GetModuleHandleW(L"msvcrt.dll");
    const auto address = reinterpret_cast<void*>(GetProcAddress(runtime, "_onexit"));
    const auto onExit = reinterpret_cast<Register>(address);
    // A library that is being unloaded cannot wait for its threads, which need the loader's lock to end. So
    // this one stays loaded.
    HMODULE library = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_PIN,
                       reinterpret_cast<const wchar_t*>(function), &library);
    if (onExit)
        onExit(function);
}
