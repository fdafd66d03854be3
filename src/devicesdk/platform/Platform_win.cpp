#include "platform/Platform.h"

#include <QDir>
#include <QtGlobal>

#include <qt_windows.h>

// What callers may rely on when they hand wide texts and results through the C interface.
static_assert(sizeof(wchar_t) == sizeof(char16_t) && sizeof(long) == 4);

// The roaming folder: settings follow the user. Qt's generic location is the local one.
QString Platform::userConfigFolder()
{
    const QString folder = QDir::fromNativeSeparators(qEnvironmentVariable("APPDATA"));
    return folder.isEmpty() ? QDir::homePath() + QStringLiteral("/AppData/Roaming") : folder;
}

bool Platform::syncFolder(const QString&)
{
    return true; // a rename is in the file system's journal
}

// atexit() of a library runs what it was given when the library is detached. At the end of a process the
// system has then ended all other threads by force, perhaps in the middle of a write. The C runtime's own
// list is run before.
void Platform::atExit(void (*function)())
{
    using Register = void* (*)(void (*)());
    const HMODULE runtime = GetModuleHandleW(L"msvcrt.dll");
    const auto address = reinterpret_cast<void*>(GetProcAddress(runtime, "_onexit"));
    const auto onExit = reinterpret_cast<Register>(address);
    // A library that is being unloaded cannot wait for its threads, whose end needs the loader's lock as
    // well.
    HMODULE library = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_PIN,
                       reinterpret_cast<const wchar_t*>(function), &library);
    if (onExit)
        onExit(function);
}
