#pragma once

#include <QByteArray>
#include <QLockFile>
#include <QString>

#include <chrono>

/// Reads and replaces whole files that other processes read and replace too.
namespace FileAccess {

/// Larger files are neither read nor written, because several copies must fit into memory.
constexpr qint64 MaximalSize = qint64(256) * 1024 * 1024;

struct Content
{
    enum Status { Missing, Unreadable, Read };
    Status status = Missing;
    QByteArray bytes;
};

/// Reads a file. Anything else, such as a folder, and a file that is too large count as unreadable.
Content read(const QString& path);

/// Replaces a file, or creates it with its folders. A reader finds either the old or the new content, even
/// after a crash or a power cut. On success the new content is on disk; otherwise `error` says why not.
bool replace(const QString& path, const QByteArray& content, QString& error);

/// The lock that a process holds while it reads, changes and replaces a file: another file beside it.
class ProcessLock
{
public:
    explicit ProcessLock(const QString& path);

    /// Waits for other processes, `patience` at most. A lock left behind by a dead process is taken over.
    bool lock(std::chrono::milliseconds patience);
    void unlock() { m_file.unlock(); }

    /// Why lock() failed.
    QString errorString() const;

private:
    QString m_path;
    QLockFile m_file;
};

} // namespace FileAccess
