#pragma once

#include "support/Fault.h"

#include <QHash>
#include <QString>
#include <QVector>

class QIODevice;

/// One text of a language file.
struct LanguageText
{
    QString id;
    QString text;
    QString comment; ///< the comments before it, separated by an empty line
    qint64 line = 0;
};

using LanguageTexts = QVector<LanguageText>;
using LanguageIndex = QHash<QString, const LanguageText*>;

/// The texts by their identifiers; of several with one identifier the last one. Points into the vector.
LanguageIndex indexOf(const LanguageTexts& texts);

/// The file of one plugin in one language, PLUGIN_LANGUAGE.lang.
struct LanguageFile
{
    QString path;
    QString plugin;
    QString language; ///< language and country code such as "en-us"
    LanguageTexts texts;
    QString lastComment; ///< the comments after the last text, separated by an empty line

    /// Plugin and language from a file's name, which may have any suffix.
    /// @return without texts; plugin and language are empty if the name is not PLUGIN_LANGUAGE
    static LanguageFile named(const QString& path);

    /// Reads a file. Of several texts with one identifier all are kept.
    /// @param faults receives faults of the file itself: XML, names, duplicates, elements in texts
    static LanguageFile read(const QString& path, Faults& faults);

    /// Writes texts and comments as a language file. Two hyphens in a row, which XML forbids in comments, are
    /// separated by a space.
    void write(QIODevice& device) const;
};
