#include "platform/FolderWatch.h"

#include <QFile>

#include <algorithm>
#include <iterator>
#include <set>
#include <utility>

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/inotify.h>
#include <sys/vfs.h>
#include <unistd.h>

namespace {

using Clock = std::chrono::steady_clock;

/// What can happen to a folder further up: the path may then lead elsewhere.
constexpr uint32_t PathChanges = IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;
constexpr uint32_t Changes =
    PathChanges | IN_MODIFY | IN_CLOSE_WRITE | IN_CREATE | IN_DELETE | IN_MOVE | IN_ATTRIB;

/// Nobody wants to read a half-written file, so a change is reported when the writer closes the file. One that
/// keeps it open does not hold up the report any longer.
constexpr std::chrono::seconds WriterPatience{1};
constexpr Clock::time_point NoTime = Clock::time_point::max();

/// File systems on which other machines, or programs, make changes that the kernel does not see: AFS, Ceph,
/// CIFS, Coda, FUSE, NFS, 9P, SMB and SMB 2.
constexpr uint32_t RemoteFileSystems[] = {0x5346414f, 0x00c36400, 0xff534d42, 0x73757245, 0x65735546,
                                          0x00006969, 0x01021997, 0x0000517b, 0xfe534d42};

constexpr std::chrono::milliseconds LongestDeafWait{100}; // when no descriptor was left to be woken by

bool isLocal(const QString& folder)
{
    struct statfs info = {};
    if (statfs(QFile::encodeName(folder).constData(), &info) != 0)
        return false;
    return std::find(std::begin(RemoteFileSystems), std::end(RemoteFileSystems), uint32_t(info.f_type)) ==
           std::end(RemoteFileSystems);
}

/// Empty for the root, which stays where it is.
QString parentOf(const QString& folder)
{
    return folder.section(QLatin1Char('/'), 0, -2);
}

std::chrono::milliseconds shorter(std::chrono::milliseconds timeout, std::chrono::milliseconds limit)
{
    return timeout == FolderWatch::Forever ? limit : std::min(timeout, limit);
}

/// Reads everything that has happened and returns all its bits.
uint32_t takeChanges(int descriptor)
{
    alignas(inotify_event) char buffer[4096];
    uint32_t changes = 0;
    for (ssize_t size = read(descriptor, buffer, sizeof buffer); size > 0;
         size = read(descriptor, buffer, sizeof buffer)) {
        for (const char* next = buffer; next < buffer + size;) {
            const auto* const event = reinterpret_cast<const inotify_event*>(next);
            changes |= event->mask;
            next += sizeof *event + event->len;
        }
    }
    return changes;
}

} // namespace

struct FolderWatch::System
{
    // Without descriptors left both are -1, which poll() and the others ignore.
    int changes = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    int wakes = eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC);
    std::set<int> folders;
    Clock::time_point openFileTime = NoTime; // when to report changes of a file that is still open

    bool add(const QString& folder, uint32_t events)
    {
        // A folder that is watched already keeps its number.
        const int number = inotify_add_watch(changes, QFile::encodeName(folder).constData(), events);
        if (number >= 0)
            folders.insert(number);
        return number >= 0;
    }
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
    const std::set<int> before = std::exchange(m_system->folders, {});
    for (const QString& folder : folders) {
        for (QString parent = parentOf(folder); !parent.isEmpty(); parent = parentOf(parent))
            m_system->add(parent, PathChanges);
    }
    bool isReliable = true;
    for (const QString& folder : folders) // after the others, because it may be one of them
        isReliable = m_system->add(folder, Changes) && isLocal(folder) && isReliable;
    for (const int number : before) {
        if (m_system->folders.count(number) == 0)
            inotify_rm_watch(m_system->changes, number);
    }
    return isReliable;
}

bool FolderWatch::wait(std::chrono::milliseconds timeout)
{
    if (m_system->wakes < 0)
        timeout = shorter(timeout, LongestDeafWait);
    if (m_system->openFileTime != NoTime)
        timeout = shorter(timeout, WriterPatience);
    pollfd sources[] = {{m_system->changes, POLLIN, 0}, {m_system->wakes, POLLIN, 0}};
    poll(sources, std::size(sources), int(timeout.count()));
    eventfd_t wakes = 0;
    eventfd_read(m_system->wakes, &wakes);
    const uint32_t changes = takeChanges(m_system->changes);
    const Clock::time_point now = Clock::now();
    if ((changes & IN_MODIFY) != 0 && m_system->openFileTime == NoTime)
        m_system->openFileTime = now + WriterPatience;
    const bool isDone = (changes & ~uint32_t(IN_MODIFY | IN_IGNORED)) != 0;
    if (!isDone && now < m_system->openFileTime)
        return false;
    m_system->openFileTime = NoTime;
    return true;
}

void FolderWatch::wake()
{
    eventfd_write(m_system->wakes, 1);
}
