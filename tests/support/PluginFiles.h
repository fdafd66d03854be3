#pragma once

#include <QStringList>
#include <QVector>

/// One record of the plugin library file; every child element is written. Test clsids are short texts: the
/// container takes any text as clsid.
struct PluginEntry
{
    QString clsid;
    QString url; ///< without "Test" it begins the name: "TestAlpha" is named "AlphaPlugin"
    bool isActive = false;
    bool isStatic = false;
    int type = 0;
};

/// The text of a plugin library file.
QByteArray pluginLibraryXml(const QVector<PluginEntry>& entries, const QString& mainPlugin = {});

/// Text of a "common" element.
QByteArray commonXml(const QStringList& clsids);

/// Text of a "device", "IMSI", "GID" or "customize" element with its "plugin" child.
QByteArray ruleXml(const char* element, const QString& name, const QStringList& add,
                   const QStringList& remove = {});
