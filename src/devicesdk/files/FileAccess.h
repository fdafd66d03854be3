#pragma once

#include <QByteArray>
#include <QLockFile>
#include <QString>

#include <chrono>

/// Reading and replacing whole files that other processes read and replace as well.
namespace FileAccess {

/// Larger files are neither read nor written: nothing of ours comes near, and memory must hold several
/// copies.
constexpr qint64 MaximalSize = qint64(256) * 1024 * 1024;

struct Content
{
    enum Status { Missing, Unreadable, Read };
    Status status = Missing;
    QByteArray bytes;
};

/// Reads a file. Whatever is there but is no readable file of sensible size counts as unreadable.
Content read(const QString& path);

/// Replaces or creates a file, and its folders: a reader, also after a crash or a power cut, finds the old
/// content or the new one. The new one is on the disk when this returns true. Otherwise `error` says why not.
bool replace(const QString& path, const QByteArray& content, QString& error);

/// The lock that a process holds from reading a file until it has replaced it, as a file beside it.
class ProcessLock
{
public:
    explicit ProcessLock(const QString& path);

    /// Waits for other processes, but not for ever. A lock left behind by a process that died counts as free.
    bool lock(std::chrono::milliseconds patience);
    void unlock() { m_file.unlock(); }

    /// Why lock() has failed.
    QString errorString() const;

private:
    QString m_path;
    QLockFile m_file;
};

} // namespace FileAccess
