#include "platform/FolderWatch.h"

#include <QDir>

#include <iterator>
#include <map>
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

/// An open folder and the request for its changes. Between requests the system collects changes.
class Folder
{
public:
    explicit Folder(const QString& path)
        : m_handle(CreateFileW(nativePath(path).c_str(), FILE_LIST_DIRECTORY,
                               FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                               FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OVERLAPPED, nullptr))
    {
        m_request.hEvent = CreateEventW(nullptr, TRUE, FALSE, nullptr);
        isWatched = ask();
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder()
    {
        DWORD size = 0;
        if (isWatched && CancelIoEx(m_handle, &m_request))
            GetOverlappedResult(m_handle, &m_request, &size, TRUE);
        if (m_handle != INVALID_HANDLE_VALUE)
            CloseHandle(m_handle);
        CloseHandle(m_request.hEvent);
    }

    /// Asks for the next change. Fails when the folder was removed.
    bool ask()
    {
        return ReadDirectoryChangesW(m_handle, m_buffer, sizeof m_buffer, FALSE, Changes, nullptr, &m_request,
                                     nullptr);
    }
    HANDLE event() const { return m_request.hEvent; }

    bool isWatched = false;

private:
    HANDLE m_handle;
    OVERLAPPED m_request = {};
    alignas(DWORD) char m_buffer[4096];
};

} // namespace

struct FolderWatch::System
{
    HANDLE wake = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    std::map<QString, std::unique_ptr<Folder>> folders;
};

FolderWatch::FolderWatch()
    : m_system(std::make_unique<System>())
{
}

FolderWatch::~FolderWatch()
{
    CloseHandle(m_system->wake);
}

bool FolderWatch::watch(const QStringList& folders)
{
    std::map<QString, std::unique_ptr<Folder>> watched;
    bool isReliable = true;
    for (const QString& path : folders) {
        std::unique_ptr<Folder>& folder = m_system->folders[path];
        if (!folder || !folder->isWatched)
            folder = std::make_unique<Folder>(path);
        isReliable = isReliable && folder->isWatched && isLocal(path);
        if (folder->isWatched)
            watched[path] = std::move(folder);
    }
    m_system->folders.swap(watched);
    return isReliable;
}

bool FolderWatch::wait(std::chrono::milliseconds timeout)
{
    std::vector<HANDLE> handles = {m_system->wake};
    for (const auto& folder : m_system->folders)
        handles.push_back(folder.second->event());
    const DWORD milliseconds = timeout == Forever ? INFINITE : DWORD(timeout.count());
    const auto count = DWORD(handles.size());
    const DWORD source = WaitForMultipleObjects(count, handles.data(), FALSE, milliseconds);
    if (source <= WAIT_OBJECT_0 || source >= WAIT_OBJECT_0 + count)
        return false;
    Folder& changed = *std::next(m_system->folders.begin(), source - WAIT_OBJECT_0 - 1)->second;
    changed.isWatched = changed.ask();
    return true;
}

void FolderWatch::wake()
{
    SetEvent(m_system->wake);
}
