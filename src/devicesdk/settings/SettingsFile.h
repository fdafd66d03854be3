#pragma once

#include "files/KnownFile.h"
#include "settings/SettingsTable.h"

#include <QPair>
#include <QString>

#include <map>
#include <optional>

class IniDocument;

/// Values to write by section and key.
using SettingsChanges = std::map<QPair<QString, QString>, QString>;

/// A settings store on disk, shared with other processes. Not thread-safe.
///
/// If the store has broken lines, the next write keeps a copy as "<name>.corrupt-<time>" and then drops them.
/// A store that cannot be read at all is never overwritten. A problem is logged when it begins, not at each
/// attempt.
class SettingsFile
{
public:
    /// `path` may be empty if there is no such store.
    explicit SettingsFile(const QString& path);

    /// Returns all entries if the file has changed since the last look or write.
    std::optional<SettingsTable> look();

    /// Puts the changes into the file as it is now. On return they are on disk. Returns all entries of the
    /// file, or nothing if it could not be written.
    std::optional<SettingsTable> write(const SettingsChanges& changes);

    /// True if the file has broken lines, which a write removes.
    bool isBroken() const { return m_isBroken; }

    /// False while the file exists but cannot be read.
    bool isReadable() const { return m_isReadable; }

private:
    std::optional<IniDocument> writeLocked(const SettingsChanges& changes);
    bool putAside(const QByteArray& content);
    void warnOnce(const QString& problem);

    QString m_path;
    KnownFile m_file;
    FileAccess::ProcessLock m_lock;
    bool m_isReadable = true;
    bool m_isBroken = false;
    QString m_problem; // logged, and not over yet
};
