#include "files/FileAccess.h"

#include "platform/Platform.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <thread>

using namespace std::chrono_literals;

namespace {

constexpr auto StaleLockAge = 10s; // much longer than any write takes
constexpr auto LockInterval = 5ms;
constexpr int Retries = 10; // readers that watch the file open it just when it changes

/// Repeats what may fail temporarily: on Windows a file that another process has open cannot be replaced.
template <typename Attempt>
bool persistently(Attempt attempt)
{
    for (int i = 0; i < Retries; ++i) {
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
    // Opening anything but a file, such as a pipe, could block forever.
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
        error = QStringLiteral("the disk is full or faulty"); // Qt says "Unknown error"
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
        error = QStringLiteral("the folder cannot be created");
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
    // QLockFile's own wait tries at growing intervals, so a process that writes all the time would starve
    // the others.
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
    return QStringLiteral("its lock file cannot be created");
}
