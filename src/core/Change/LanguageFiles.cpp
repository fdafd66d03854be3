#include "Change/LanguageFiles.h"

#include <QDir>

QStringList LanguageFiles::languages(const QString& folder, const QString& plugin)
{
    const QString prefix = plugin + QLatin1Char('_');
    const QStringList files = QDir(folder + QLatin1Char('/') + plugin)
                                  .entryList({prefix + QLatin1Char('*') + Suffix}, QDir::Files, QDir::Name);
    QStringList codes;
    for (const QString& file : files)
        codes.append(file.mid(prefix.size()).chopped(Suffix.size()));
    codes.sort();
    return codes;
}

QString LanguageFiles::ownName(const QString& language)
{
    QString name = QLocale(language).nativeLanguageName();
    if (name.isEmpty())
        return language;
    name[0] = name[0].toUpper(); // "français" is capitalised at the start of a line
    return name;
}
