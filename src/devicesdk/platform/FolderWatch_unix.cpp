#include "platform/FolderWatch.h"

#include <QFile>

#include <algorithm>
#include <iterator>
#include <limits>
#include <set>

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/inotify.h>
#include <sys/vfs.h>
#include <unistd.h>

namespace {

// A file that is being written is reported when it is closed, not before: nobody wants to read half of it.
constexpr uint32_t Changes =
    IN_CLOSE_WRITE | IN_CREATE | IN_DELETE | IN_MOVE | IN_ATTRIB | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;

/// File systems on which other machines, or programs, make changes that the kernel does not see: AFS, Ceph,
/// CIFS, Coda, FUSE, NFS, 9P, SMB and SMB 2.
constexpr uint32_t RemoteFileSystems[] = {0x5346414f, 0x00c36400, 0xff534d42, 0x73757245, 0x65735546,
                                          0x00006969, 0x01021997, 0x0000517b, 0xfe534d42};

constexpr std::chrono::milliseconds LongestDeafWait{100}; // when no descriptor was left to be woken by

bool isLocal(const char* folder)
{
    struct statfs info = {};
    if (statfs(folder, &info) != 0)
        return false;
    return std::find(std::begin(RemoteFileSystems), std::end(RemoteFileSystems), uint32_t(info.f_type)) ==
           std::end(RemoteFileSystems);
}

/// Reads all that there is from a non-blocking descriptor.
void drain(int descriptor)
{
    char buffer[4096];
    while (read(descriptor, buffer, sizeof buffer) > 0) {
    }
}

} // namespace

struct FolderWatch::System
{
    // Without descriptors left both are -1, which poll() and the others ignore.
    int changes = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    int wakes = eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC);
    std::set<int> folders;
};

FolderWatch::FolderWatch()
    : m_system(std::make_unique<System>())
{
}

FolderWatch::~FolderWatch()
{
    close(m_system->changes);
    close(m_system->wakes);
}

bool FolderWatch::watch(const QStringList& folders)
{
    std::set<int> watched;
    bool isReliable = true;
    for (const QString& folder : folders) {
        const QByteArray path = QFile::encodeName(folder);
        // A folder that is watched already keeps its number.
        const int number = inotify_add_watch(m_system->changes, path.constData(), Changes);
        if (number >= 0)
            watched.insert(number);
        isReliable = isReliable && number >= 0 && isLocal(path.constData());
    }
    for (const int number : m_system->folders) {
        if (watched.count(number) == 0)
            inotify_rm_watch(m_system->changes, number);
    }
    m_system->folders.swap(watched);
    return isReliable;
}

bool FolderWatch::wait(std::chrono::milliseconds timeout)
{
    if (m_system->wakes < 0)
        timeout = timeout == Forever ? LongestDeafWait : std::min(timeout, LongestDeafWait);
    const auto limited = int(std::min<long long>(timeout.count(), std::numeric_limits<int>::max()));
    pollfd sources[] = {{m_system->changes, POLLIN, 0}, {m_system->wakes, POLLIN, 0}};
    poll(sources, std::size(sources), limited);
    for (const pollfd& source : sources) {
        if (source.revents != 0)
            drain(source.fd);
    }
    return sources[0].revents != 0;
}

void FolderWatch::wake()
{
    eventfd_write(m_system->wakes, 1);
}
