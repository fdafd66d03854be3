#include "platform/Platform.h"

#include <QDir>
#include <QtGlobal>

#include <qt_windows.h>

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

bool Platform::otherThreadsAreGone()
{
    // Static objects of a library are destroyed after the system has ended all threads but the last. Only the
    // system library can tell this from an ordinary call; its header declares the function for drivers alone.
    using ShutdownTest = BOOLEAN(NTAPI*)();
    const auto address =
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "RtlDllShutdownInProgress"));
    const auto isShuttingDown = reinterpret_cast<ShutdownTest>(address);
    return isShuttingDown && isShuttingDown();
}

void Platform::keepLibraryLoaded()
{
    // A library that is being unloaded cannot wait for its threads: their end needs the loader's lock as
    // well.
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_PIN,
                       reinterpret_cast<const wchar_t*>(&Platform::keepLibraryLoaded), &module);
}
