#pragma once

#include "IniLines.h"
#include "XmlTree.h"

#include <QSet>
#include <QString>
#include <QStringList>

#include <vector>

/// The kinds of XML files that the application reads.
enum class Format {
    PluginLibrary,
    PluginConfiguration,
    MainWindow,
    OperatorList,
    ImsiList,
    NetworkList,
    Languages,
    Language,
    Menu,
    ToolBar,
    StandardConfiguration,
    Unknown, ///< a plugin's own
};

struct InstalledXml
{
    QString path;   ///< for findings: begins with the installation's folder as the user gave it
    QString plugin; ///< name of the folder below "plugins"; empty outside of these
    Format format = Format::Unknown;
    XmlTree tree;

    const char* schema() const; ///< name of its schema; null for a plugin's own format
};

/// The files of an installation, as they are on the disk.
class Installation
{
public:
    /// Reads all of them. A file that cannot be read is empty.
    explicit Installation(const QString& folder);

    const QString& folder() const { return m_folder; }
    QString path(const QString& relative) const { return m_folder + QLatin1Char('/') + relative; }
    bool has(const QString& relative) const;

    const std::vector<InstalledXml>& xmlFiles() const { return m_xmlFiles; }

    /// Calls visit(file) for the files of a format, in the order of their names.
    template <typename Visit>
    void forEach(Format format, Visit visit) const
    {
        for (const InstalledXml& file : m_xmlFiles)
            if (file.format == format)
                visit(file);
    }

    const IniLines& defaults() const { return m_defaults; }
    const IniLines& modems() const { return m_modems; }

    /// The default operator.
    QString operatorName() const;

    /// Codes of the languages that the main window offers.
    QStringList languages() const;

    bool hasText(const QString& plugin, const QString& id) const { return m_texts.contains({plugin, id}); }

private:
    void readXml(const QString& path, const QString& plugin);

    QString m_folder;
    std::vector<InstalledXml> m_xmlFiles;
    IniLines m_defaults;
    IniLines m_modems;
    QSet<QPair<QString, QString>> m_texts; ///< by plugin and identifier
};
