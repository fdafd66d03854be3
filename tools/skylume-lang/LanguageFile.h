#pragma once

#include "Fault.h"

#include <QString>
#include <QVector>

class QIODevice;

/// One text of a language file.
struct LanguageText
{
    QString id;
    QString text;
    QString comment; ///< that stands before it
    qint64 line = 0;
};

using LanguageTexts = QVector<LanguageText>;

/// The texts of one plugin in one language, PLUGIN_LANGUAGE.lang.
struct LanguageFile
{
    QString path;
    QString plugin;
    QString language; ///< language and country code such as "en-us"
    LanguageTexts texts;

    /// A text by its identifier; null when there is none.
    const LanguageText* find(const QString& id) const;

    /// Plugin and language from a file's name. The name may have any suffix.
    /// @return without texts; language and plugin are empty when the name is not built that way
    static LanguageFile named(const QString& path);

    /// Reads a file. Of several texts with one identifier all are kept.
    /// @param faults receives what is wrong with the file as such: XML, names, duplicates, elements in texts
    static LanguageFile read(const QString& path, Faults& faults);

    /// Writes the texts as a language file.
    static void write(QIODevice& device, const LanguageTexts& texts);
};
