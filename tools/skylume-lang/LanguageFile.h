#pragma once

#include "Fault.h"

#include <QHash>
#include <QString>
#include <QVector>

class QIODevice;

/// One string of a language file.
struct LanguageText
{
    QString id;
    QString text;
    QString comment; ///< the comments before it, separated by an empty line
    qint64 line = 0;
};

using LanguageTexts = QVector<LanguageText>;
using LanguageIndex = QHash<QString, const LanguageText*>;

/// The strings by their identifiers; of several with one identifier the last one. Points into the vector.
LanguageIndex indexOf(const LanguageTexts& texts);

/// The file of one plugin in one language, PLUGIN_LANGUAGE.lang.
struct LanguageFile
{
    QString path;
    QString plugin;
    QString language; ///< language and country code such as "en-us"
    LanguageTexts texts;
    QString lastComment; ///< the comments after the last string, separated by an empty line

    /// Plugin and language from a file's name, which may have any suffix.
    /// @return without strings; plugin and language are empty if the name is not PLUGIN_LANGUAGE
    static LanguageFile named(const QString& path);

    /// Reads a file. Of several strings with one identifier all are kept.
    /// @param faults receives faults of the file itself: XML, names, duplicates, elements in strings
    static LanguageFile read(const QString& path, Faults& faults);

    /// Writes strings and comments as a language file. Two hyphens in a row, which XML forbids in comments,
    /// are separated by a space.
    void write(QIODevice& device) const;
};
