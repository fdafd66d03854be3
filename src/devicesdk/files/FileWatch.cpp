#include "files/FileWatch.h"

#include "Log.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

using namespace std::chrono_literals;
using std::chrono::milliseconds;

namespace {

constexpr auto SlowLookInterval = 30s;
constexpr auto QuietTime = 20ms;
constexpr int MostSteps = 10;
constexpr int MostLinks = 8; // links may form a circle

/// The folder that holds the file, or will hold its missing folders.
QString existingFolderOf(const QString& file)
{
    QString folder = QFileInfo(file).absolutePath();
    while (!QFileInfo(folder).isDir() && !QDir(folder).isRoot())
        folder = QFileInfo(folder).absolutePath();
    return folder;
}

/// Where a change of the files shows. If a file is a symbolic link, so are the folders of its targets.
QStringList foldersOf(const QStringList& files)
{
    QStringList folders;
    for (QString file : files) {
        for (int links = 0; links <= MostLinks && !file.isEmpty(); ++links) {
            folders.append(existingFolderOf(file));
            file = QFileInfo(file).symLinkTarget();
        }
    }
    folders.removeDuplicates();
    return folders;
}

} // namespace

FileWatch::FileWatch(const QStringList& files)
    : m_files(files)
{
    m_files.removeAll(QString());
    renew();
}

bool FileWatch::wait(Clock::time_point until)
{
    const Clock::time_point end = std::min(until, m_nextLook);
    milliseconds timeout = FolderWatch::Forever;
    if (end != Clock::time_point::max())
        timeout = std::max(0ms, std::chrono::ceil<milliseconds>(end - Clock::now()));
    const bool mayDiffer = m_folders.wait(timeout) || Clock::now() >= m_nextLook;
    if (mayDiffer) {
        settle();
        renew();
    }
    return mayDiffer;
}

/// A file is replaced in several steps: another one is created, written and renamed. Reading waits until they
/// are over, because on Windows a file that is being read cannot be replaced.
void FileWatch::settle()
{
    for (int step = 0; step < MostSteps && m_folders.wait(QuietTime); ++step) {
    }
}

/// Folders appear and disappear, so what is to be watched is determined after each change.
void FileWatch::renew()
{
    const bool isReliable = m_folders.watch(foldersOf(m_files));
    if (!isReliable && m_nextLook == Clock::time_point::max())
        qCDebug(logDeviceSdk, "Changes of %s are looked for every %d seconds",
                qUtf8Printable(m_files.join(QStringLiteral(", "))), int(SlowLookInterval.count()));
    m_nextLook = isReliable ? Clock::time_point::max() : Clock::now() + SlowLookInterval;
}
