#include "platform/LanguageId_p.h"

#include "platform/LocaleLanguage_unix_p.h"

#include <QFile>

#include <unicode/uloc.h>

namespace {

using LocaleOperation = decltype(&uloc_getLanguage);

QByteArray ofLocale(LocaleOperation operation, const QByteArray& locale)
{
    char text[ULOC_FULLNAME_CAPACITY];
    UErrorCode error = U_ZERO_ERROR;
    const int length = operation(locale.constData(), text, int(sizeof text), &error);
    return U_SUCCESS(error) && length < int(sizeof text) ? QByteArray(text, length) : QByteArray();
}

// Locale names give the script as a modifier; ICU expects its code.
QByteArray scriptOfModifier(const QByteArray& modifier)
{
    if (modifier == "latin")
        return "Latn";
    return modifier == "cyrillic" ? "Cyrl" : QByteArray();
}

// An identifier without a country: its sublanguage is 0 or one of the two highest, which stand for a script.
// Windows never uses one as the computer's language.
bool isNeutral(quint32 id)
{
    const quint32 sublanguage = id >> 10;
    return sublanguage == 0 || sublanguage >= 0x1e;
}

// ICU's table lists most languages without a script ("de_DE"), but languages with several scripts only with one.
quint32 identifierOf(const QByteArray& locale, const QByteArray& script)
{
    const QByteArray full = ofLocale(&uloc_addLikelySubtags, locale);
    const QByteArray language = ofLocale(&uloc_getLanguage, full);
    const QByteArray country = ofLocale(&uloc_getCountry, full);
    const QByteArray written = script.isEmpty() ? language : language + '_' + script;
    const quint32 id = uloc_getLCID((written + '_' + country).constData());
    return isNeutral(id) ? uloc_getLCID(full.constData()) : id;
}

QByteArray unquoted(const QByteArray& value)
{
    const bool isQuoted =
        value.size() > 1 && (value.front() == '"' || value.front() == '\'') && value.back() == value.front();
    return isQuoted ? value.mid(1, value.size() - 2) : value;
}

QByteArray localeOfFile(const QString& fileName)
{
    static constexpr char name[] = "LANG=";
    QFile file(fileName);
    QByteArray locale;
    if (!file.open(QIODevice::ReadOnly))
        return locale;
    const QList<QByteArray> lines = file.readAll().split('\n');
    for (const QByteArray& line : lines) {
        const QByteArray setting = line.trimmed();
        if (setting.startsWith(name))
            locale = unquoted(setting.mid(int(qstrlen(name))));
    }
    return locale;
}

} // namespace

quint16 Platform::languageIdOfLocale(const QByteArray& name)
{
    const QList<QByteArray> parts = name.split('@');
    const QByteArray locale = parts.first().split('.').first();
    if (locale.isEmpty())
        return 0;
    if (locale == "C" || locale == "POSIX")
        return languageIdOfLocale("en_US");
    return quint16(identifierOf(locale, scriptOfModifier(parts.value(1))));
}

QByteArray Platform::localeOfFiles(const QStringList& files)
{
    for (const QString& file : files) {
        const QByteArray locale = localeOfFile(file);
        if (!locale.isEmpty())
            return locale;
    }
    return {};
}

quint16 Platform::systemLanguageId()
{
    return languageIdOfLocale(
        localeOfFiles({QStringLiteral("/etc/locale.conf"), QStringLiteral("/etc/default/locale")}));
}

quint16 Platform::userLanguageId()
{
    for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const QByteArray locale = qgetenv(variable);
        if (!locale.isEmpty())
            return languageIdOfLocale(locale);
    }
    return 0;
}
