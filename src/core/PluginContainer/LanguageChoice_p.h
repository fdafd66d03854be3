#pragma once

#include "PluginContainer/LanguageInfoEx.h"
#include "skylume_global.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

/// Which of the installed languages a start begins with. The functions decide by their arguments alone;
/// ofCountry() is exported for the tests.
namespace LanguageChoice {

/// The answer where the files do not give one.
inline QString fallback()
{
    return QStringLiteral("_en-us");
}

/// Long names to short names.
using Candidates = QHash<QString, QString>;

/// The installed languages that have the computer's number.
/// @param id the number in decimal digits
/// @return the first record with exactly that number, if there is one; empty when no language has it
Candidates candidates(const QList<LanguageInfoEx>& records, const QStringList& installed, const QString& id);

/// The short name of the candidate of the computer's country; any, when none is.
/// @param candidates not empty
/// @param locale     language, underscore, country in lower case: "zh_cn"
SKYLUME_EXPORT QString ofCountry(const Candidates& candidates, const QString& locale);

/// The short name of a language by its long name, whose case is ignored.
/// @return fallback() for an unknown one
QString shortName(const QString& name, const QList<LanguageInfoEx>& records);

} // namespace LanguageChoice
