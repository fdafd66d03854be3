#include "files/FileAccess.h"

#include "platform/Platform.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <thread>

using namespace std::chrono_literals;

namespace {

constexpr auto StaleLockAge = 10s; // many times what the slowest write takes
constexpr auto LockInterval = 5ms;

/// Repeats what may fail for a moment: a file that another process has open cannot be replaced on Windows.
template <typename Attempt>
bool persistently(Attempt attempt)
{
    for (int i = 0; i < 4; ++i) {
        if (attempt())
            return true;
        std::this_thread::sleep_for(10ms);
    }
    return attempt();
}

bool readOnce(const QString& path, FileAccess::Content& content)
{
    const QFileInfo info(path);
    content.bytes.clear();
    content.status = FileAccess::Content::Missing;
    if (!info.exists())
        return true;
    content.status = FileAccess::Content::Unreadable;
    QFile file(path);
    // Opening something else than a file, a pipe for instance, could wait for ever.
    if (!info.isFile() || info.size() > FileAccess::MaximalSize || !file.open(QIODevice::ReadOnly))
        return false;
    content.bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return false;
    content.status = FileAccess::Content::Read;
    return true;
}

bool replaceOnce(const QString& path, const QByteArray& content, QString& error)
{
    QSaveFile file(path);
    const bool isOpen = file.open(QIODevice::WriteOnly);
    if (isOpen && (file.write(content) != content.size() || !file.flush())) {
        error = QStringLiteral("the disk is full or faulty"); // Qt only knows "Unknown error"
        return false;
    }
    if (isOpen && file.commit())
        return true;
    error = file.errorString();
    return false;
}

} // namespace

FileAccess::Content FileAccess::read(const QString& path)
{
    Content content;
    persistently([&] { return readOnce(path, content); });
    return content;
}

bool FileAccess::replace(const QString& path, const QByteArray& content, QString& error)
{
    const QString folder = QFileInfo(path).absolutePath();
    if (content.size() > MaximalSize) {
        error = QStringLiteral("the content is too large");
        return false;
    }
    if (!QDir().mkpath(folder)) {
        error = QStringLiteral("the folder cannot be made");
        return false;
    }
    if (!persistently([&] { return replaceOnce(path, content, error); }))
        return false;
    error = QStringLiteral("the folder cannot be synced");
    return Platform::syncFolder(folder);
}

FileAccess::ProcessLock::ProcessLock(const QString& path)
    : m_path(path)
    , m_file(path + QStringLiteral(".lock"))
{
    m_file.setStaleLockTime(int(std::chrono::milliseconds(StaleLockAge).count()));
}

bool FileAccess::ProcessLock::lock(std::chrono::milliseconds patience)
{
    QDir().mkpath(QFileInfo(m_path).absolutePath());
    // QLockFile's own wait asks ever less often, so that a process which writes all the time would starve
    // others.
    const auto deadline = std::chrono::steady_clock::now() + patience;
    while (!m_file.tryLock(0)) {
        if (m_file.error() != QLockFile::LockFailedError || std::chrono::steady_clock::now() > deadline)
            return false;
        std::this_thread::sleep_for(LockInterval);
    }
    return true;
}

QString FileAccess::ProcessLock::errorString() const
{
    if (m_file.error() == QLockFile::LockFailedError)
        return QStringLiteral("another process does not release its lock");
    return QStringLiteral("the lock file cannot be made beside it");
}
