#include "files/KnownFile.h"

#include <QFileInfo>

#include <algorithm>

using FileAccess::Content;

KnownFile::KnownFile(const QStringList& candidates)
    : m_candidates(candidates)
{
}

std::optional<Content> KnownFile::look()
{
    const auto exists = [](const QString& path) {
        return QFileInfo::exists(path);
    };
    const auto found = std::find_if(m_candidates.cbegin(), m_candidates.cend(), exists);
    m_path = found != m_candidates.cend() ? *found : m_candidates.value(0);
    Content content = FileAccess::read(m_path);
    if (m_content && m_content->status == content.status && m_content->bytes == content.bytes)
        return {};
    m_content = content;
    return content;
}
