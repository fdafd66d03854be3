#pragma once

#include <QStringList>

#include <filesystem>
#include <vector>

/// The files of the plugin folder. The list is read again only when the folder has changed: reading it for
/// every plugin would make the bulk load quadratic.
class PluginFolder
{
public:
    explicit PluginFolder(const QString& path);

    /// The absolute paths of all files whose name matches fileBase followed by "*", in the order in which the
    /// system lists them. As in every name filter, case is ignored and "*", "?" and "[" in fileBase are
    /// wildcards.
    QStringList filesBeginningWith(const QString& fileBase);

private:
    using FileTime = std::filesystem::file_time_type;

    struct Entry
    {
        QString foldedName;
        int position; ///< in m_names
    };

    void refresh();
    void list();
    std::vector<int> positionsOf(const QString& fileBase) const;
    std::vector<int> positionsByPrefix(const QString& fileBase) const;
    std::vector<int> positionsByWildcard(const QString& pattern) const;

    QString m_path;
    std::filesystem::path m_nativePath;
    QStringList m_names;         ///< in the system's order
    std::vector<Entry> m_sorted; ///< by folded name
    FileTime m_stamp;            ///< the folder's time stamp when it was listed
    bool m_isCurrent = false;    ///< the list can be trusted while the time stamp is m_stamp
};
