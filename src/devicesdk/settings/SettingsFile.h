#pragma once

#include "files/WatchedFile.h"
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
/// A store with broken lines is put aside as "<name>.corrupt-<time>" by the next write; what was readable
/// stays. A store that cannot be read at all is never overwritten. Problems are logged when they begin, not
/// at each attempt.
class SettingsFile
{
public:
    /// `path` may be empty: then there is no such store.
    explicit SettingsFile(const QString& path);

    /// All entries, if the file has changed since the last look or write.
    std::optional<SettingsTable> look();

    /// Writes the changes over what the file holds now; on return they are on the disk. Gives all entries of
    /// the file, or nothing when that was not possible.
    std::optional<SettingsTable> write(const SettingsChanges& changes);

    /// Whether the file has broken lines that a write should put aside. Not while somebody may be editing it.
    bool needsRepair() const { return m_isBroken && !m_file.isFresh(); }

    /// False while the file is there but cannot be read.
    bool isReadable() const { return m_isReadable; }

private:
    std::optional<IniDocument> writeLocked(const SettingsChanges& changes);
    bool putAside(const QByteArray& content);
    void warnOnce(const QString& problem);

    QString m_path;
    WatchedFile m_file;
    FileAccess::ProcessLock m_lock;
    bool m_isReadable = true;
    bool m_isBroken = false;
    QString m_problem; // the one that was logged and still lasts
};
