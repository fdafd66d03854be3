#pragma once

#include "files/FileAccess.h"

#include <QByteArray>
#include <QStringList>

#include <optional>

/// Tells when a file's content has changed, for somebody who looks several times a second.
///
/// Looking compares time stamp and size. This works on every file system and for every way of replacing a
/// file, which change notifications do not, and costs microseconds. Not thread-safe.
class WatchedFile
{
public:
    /// The first of these files that exists is the one to look at, anew each time.
    explicit WatchedFile(const QStringList& candidates);

    /// The content, if it differs from that of the last look or has never been looked at.
    std::optional<FileAccess::Content> look();

    /// Makes this content the known one, as if it had been found by a look.
    void remember(const QByteArray& bytes);

    /// The file of the last look.
    const QString& path() const { return m_stamp.path; }

    /// Whether the file changed so recently before the last look that somebody may still be writing it.
    bool isFresh() const { return m_isFresh; }

private:
    struct Stamp
    {
        QString path;
        qint64 modified = 0; // milliseconds since 1970
        qint64 size = -1;    // when it does not exist
        bool operator==(const Stamp& other) const;
    };

    Stamp currentStamp() const;

    QStringList m_candidates;
    Stamp m_stamp;
    QByteArray m_digest;
    bool m_mayHideChange = true;
    bool m_isFresh = false;
};
