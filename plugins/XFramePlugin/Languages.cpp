#include "Languages.h"

#include "common/CommonUtils.h"

#include <QDir>
#include <QLocale>

#include <algorithm>

namespace {

constexpr QLatin1String FilePrefix("XFramePlugin_");
constexpr QLatin1String FileSuffix(".lang");

} // namespace

QVector<Language> availableLanguages()
{
    const QDir folder(CommonUtils::GetPluginLibraryPath() + QLatin1String("/plugins/XFramePlugin"));
    QVector<Language> languages;
    for (const QString& file : folder.entryList({FilePrefix + QLatin1Char('*') + FileSuffix}, QDir::Files)) {
        const QString code = file.mid(FilePrefix.size()).chopped(FileSuffix.size());
        languages.append({code, nameOfLanguage(code)});
    }
    std::sort(languages.begin(), languages.end(), [](const Language& left, const Language& right) {
        return left.name.localeAwareCompare(right.name) < 0;
    });
    return languages;
}

QString nameOfLanguage(const QString& code)
{
    QString name = QLocale(code).nativeLanguageName();
    if (name.isEmpty())
        return code;
    name[0] = name[0].toUpper(); // "français" is capitalised at the start of a line
    return name;
}

Qt::LayoutDirection directionOfLanguage(const QString& code)
{
    return QLocale(code).textDirection();
}
