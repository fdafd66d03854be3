#pragma once

#include "Change/LanguageFiles.h"
#include "PluginContainer/LanguageInfoEx.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

/// Chooses the start-up language among the installed ones. The results depend on the arguments only.
namespace LanguageChoice {

/// The short name to use when the files give none.
inline QString fallback()
{
    return QLatin1Char('_') + LanguageFiles::Fallback;
}

/// Long names to short names.
using Candidates = QHash<QString, QString>;

/// The installed languages with the computer's language identifier.
/// @param id the identifier in decimal digits
/// @param function the caller's name, for the log
/// @return at most one language, the first in file order; empty when no installed language has it
Candidates candidates(const QList<LanguageInfoEx>& records, const QStringList& installed, const QString& id,
                      const char* function);

/// The short name of the first candidate with the computer's country, or of the first one of all.
/// @param candidates not empty
/// @param locale     language, underscore, country in lower case: "zh_cn"
QString ofCountry(const Candidates& candidates, const QString& locale);

/// The short name of a language by its long name, ignoring case.
/// @return fallback() for an unknown one
QString shortName(const QString& name, const QList<LanguageInfoEx>& records);

} // namespace LanguageChoice
