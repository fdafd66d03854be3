#pragma once

#include "files/FileAccess.h"

#include <QStringList>

#include <optional>

/// A file that others change, and its content when it was last read. Not thread-safe.
class KnownFile
{
public:
    /// The first of these files that exists is read; which one that is may change.
    explicit KnownFile(const QStringList& candidates);

    /// Reads the file and returns its content if it is not the known one. The first call always returns it.
    std::optional<FileAccess::Content> look();

    /// Makes `bytes` the known content, after they were written.
    void remember(const QByteArray& bytes) { m_content = {FileAccess::Content::Read, bytes}; }

    /// The file that was read last.
    const QString& path() const { return m_path; }

private:
    QStringList m_candidates;
    QString m_path;
    std::optional<FileAccess::Content> m_content;
};
