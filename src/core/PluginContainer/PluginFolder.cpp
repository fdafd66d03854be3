#include "PluginContainer/PluginFolder_p.h"

#include "platform/Path_p.h"

#include <QDir>
#include <QRegularExpression>

#include <algorithm>
#include <chrono>

namespace {

/// Time stamps are coarse (up to 2 s on some file systems): a folder changed less than this before it was
/// listed may change again without its stamp showing it.
constexpr std::chrono::seconds StampGranularity(2);

bool holdsWildcard(const QString& text)
{
    return text.contains(QLatin1Char('*')) || text.contains(QLatin1Char('?')) ||
           text.contains(QLatin1Char('['));
}

} // namespace

PluginFolder::PluginFolder(const QString& path)
    : m_path(QDir(path).absolutePath())
    , m_nativePath(Platform::nativePath(m_path))
{
}

QStringList PluginFolder::filesBeginningWith(const QString& fileBase)
{
    refresh();
    std::vector<int> positions = positionsOf(fileBase);
    if (positions.empty() && m_isCurrent) { // not every file system stamps a folder when a file is added
        list();
        positions = positionsOf(fileBase);
    }
    QStringList paths;
    paths.reserve(static_cast<int>(positions.size()));
    for (const int position : positions)
        paths.append(m_path + QLatin1Char('/') + m_names.at(position));
    return paths;
}

void PluginFolder::refresh()
{
    std::error_code error;
    const FileTime stamp = std::filesystem::last_write_time(m_nativePath, error);
    if (!error && m_isCurrent && stamp == m_stamp)
        return;
    m_stamp = stamp;
    m_isCurrent = !error && FileTime::clock::now() - stamp > StampGranularity;
    list();
}

void PluginFolder::list()
{
    m_names = QDir(m_path).entryList(QDir::Files, QDir::Unsorted);
    m_sorted.clear();
    m_sorted.reserve(static_cast<std::size_t>(m_names.size()));
    for (int position = 0; position < m_names.size(); ++position)
        m_sorted.push_back({m_names.at(position).toCaseFolded(), position});
    std::sort(m_sorted.begin(), m_sorted.end(),
              [](const Entry& a, const Entry& b) { return a.foldedName < b.foldedName; });
}

std::vector<int> PluginFolder::positionsOf(const QString& fileBase) const
{
    return holdsWildcard(fileBase) ? positionsByWildcard(fileBase + QLatin1Char('*'))
                                   : positionsByPrefix(fileBase);
}

std::vector<int> PluginFolder::positionsByPrefix(const QString& fileBase) const
{
    const QString prefix = fileBase.toCaseFolded();
    auto entry = std::lower_bound(m_sorted.begin(), m_sorted.end(), prefix,
                                  [](const Entry& a, const QString& b) { return a.foldedName < b; });
    std::vector<int> positions;
    for (; entry != m_sorted.end() && entry->foldedName.startsWith(prefix); ++entry)
        positions.push_back(entry->position);
    std::sort(positions.begin(), positions.end());
    return positions;
}

std::vector<int> PluginFolder::positionsByWildcard(const QString& pattern) const
{
    const QRegularExpression expression(QRegularExpression::wildcardToRegularExpression(pattern),
                                        QRegularExpression::CaseInsensitiveOption);
    std::vector<int> positions;
    for (int position = 0; position < m_names.size(); ++position)
        if (expression.match(m_names.at(position)).hasMatch())
            positions.push_back(position);
    return positions;
}
