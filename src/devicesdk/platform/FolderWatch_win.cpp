#include "platform/FolderWatch.h"

#include <QDir>

#include <vector>

#include <qt_windows.h>

namespace {

constexpr DWORD Changes = FILE_NOTIFY_CHANGE_FILE_NAME | FILE_NOTIFY_CHANGE_DIR_NAME |
                          FILE_NOTIFY_CHANGE_ATTRIBUTES | FILE_NOTIFY_CHANGE_SIZE |
                          FILE_NOTIFY_CHANGE_LAST_WRITE | FILE_NOTIFY_CHANGE_SECURITY;

std::wstring nativePath(const QString& folder)
{
    return QDir::toNativeSeparators(folder).toStdWString();
}

bool isLocal(const QString& folder)
{
    const bool isShare = folder.startsWith(QLatin1String("//"));
    return !isShare && GetDriveTypeW(nativePath(folder.left(3)).c_str()) != DRIVE_REMOTE; // "C:/"
}

} // namespace

struct FolderWatch::System
{
    std::vector<HANDLE> handles = {CreateEventW(nullptr, FALSE, FALSE, nullptr)}; // the first one wakes
    void closeFolders();
};

void FolderWatch::System::closeFolders()
{
    for (; handles.size() > 1; handles.pop_back())
        FindCloseChangeNotification(handles.back());
}

FolderWatch::FolderWatch()
    : m_system(std::make_unique<System>())
{
}

FolderWatch::~FolderWatch()
{
    m_system->closeFolders();
    CloseHandle(m_system->handles.front());
}

bool FolderWatch::watch(const QStringList& folders)
{
    m_system->closeFolders();
    bool isReliable = true;
    for (const QString& folder : folders) {
        const HANDLE handle = FindFirstChangeNotificationW(nativePath(folder).c_str(), FALSE, Changes);
        const bool isWatched = handle != INVALID_HANDLE_VALUE; // NOLINT(performance-no-int-to-ptr)
        if (isWatched)
            m_system->handles.push_back(handle);
        isReliable = isReliable && isWatched && isLocal(folder);
    }
    return isReliable;
}

bool FolderWatch::wait(std::chrono::milliseconds timeout)
{
    const DWORD milliseconds = timeout == Forever ? INFINITE : DWORD(timeout.count());
    const auto count = DWORD(m_system->handles.size());
    const DWORD source = WaitForMultipleObjects(count, m_system->handles.data(), FALSE, milliseconds);
    return source > WAIT_OBJECT_0 && source < WAIT_OBJECT_0 + count;
}

void FolderWatch::wake()
{
    SetEvent(m_system->handles.front());
}
