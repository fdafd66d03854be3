#pragma once

#include "skylume_global.h"

#include <QLatin1String>
#include <QLocale>
#include <QString>
#include <QStringList>

/// Names of language files and languages. A language is named by a code of language and country in lower
/// case, "en-us".
///
/// All functions only compute or read folders; any thread.
namespace LanguageFiles {

/// The language that every plugin has, used when there is no file for another one.
constexpr QLatin1String Fallback("en-us");

constexpr QLatin1String Suffix(".lang");

/// The file's name without a folder: "XFramePlugin_en-us.lang".
inline QString fileName(const QString& plugin, const QString& language)
{
    return plugin + QLatin1Char('_') + language + Suffix;
}

/// The file's path: FOLDER/XFramePlugin/XFramePlugin_en-us.lang.
/// @param folder the folder of all plugins' data
inline QString path(const QString& folder, const QString& plugin, const QString& language)
{
    return folder + QLatin1Char('/') + plugin + QLatin1Char('/') + fileName(plugin, language);
}

/// The languages that a plugin has a file for, sorted by code.
/// @param folder the folder of all plugins' data
SKYLUME_EXPORT QStringList languages(const QString& folder, const QString& plugin);

/// A language's own name, "Deutsch" for "de-de"; the code itself for an unknown language.
SKYLUME_EXPORT QString ownName(const QString& language);

/// The direction in which a language is written; left to right for an unknown one.
inline Qt::LayoutDirection direction(const QString& language)
{
    return QLocale(language).textDirection();
}

} // namespace LanguageFiles
