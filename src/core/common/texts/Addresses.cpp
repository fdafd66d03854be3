#include "common/texts/Addresses_p.h"

#include <QString>

#include <algorithm>
#include <array>

namespace {

bool isWordCharacter(QChar c)
{
    return c.isLetterOrNumber() || c.isMark() || c == QLatin1Char('_') || c == QLatin1Char('-');
}

bool isLowerLetter(QChar c)
{
    return c >= QLatin1Char('a') && c <= QLatin1Char('z');
}

bool isHostCharacter(QChar c)
{
    return isLowerLetter(c) || (c >= QLatin1Char('0') && c <= QLatin1Char('9'));
}

/// Whether a character may precede "://"; ignores case.
bool isSchemeCharacter(QChar c)
{
    constexpr std::array<char16_t, 5> characters{u'h', u't', u'p', u's', u'|'};
    return std::find(characters.begin(), characters.end(), c.toLower().unicode()) != characters.end();
}

/// Whether the upper or the lower case of a character is allowed. This admits a few characters above 255.
bool isWithin255(QChar c)
{
    constexpr char16_t last = 255;
    return c.unicode() <= last || c.toLower().unicode() <= last || c.toUpper().unicode() <= last;
}

/// Whether a text consists of labels with single dots between them.
bool isDotted(QStringView text, int minimumOfLabels, bool (*isInLabel)(QChar))
{
    int labels = 0;
    bool isAtLabel = true; // a label must begin here
    for (const QChar c : text) {
        if (isInLabel(c)) {
            labels += isAtLabel;
            isAtLabel = false;
        } else if (c == QLatin1Char('.') && !isAtLabel) {
            isAtLabel = true;
        } else {
            return false;
        }
    }
    return !isAtLabel && labels >= minimumOfLabels;
}

struct Scheme
{
    QLatin1String prefix;
    bool isHttp;
};

constexpr Scheme Schemes[] = {
    {QLatin1String("http://"), true}, {QLatin1String("https://"), true}, {QLatin1String("ftp://"), false}};

} // namespace

bool Addresses::isEmail(QStringView text)
{
    const qsizetype at = text.indexOf(QLatin1Char('@'));
    return at > 0 && isDotted(text.left(at), 1, isWordCharacter) &&
           isDotted(text.mid(at + 1), 2, isWordCharacter);
}

bool Addresses::isHttp(QStringView text)
{
    const auto colon = std::find_if_not(text.begin(), text.end(), isSchemeCharacter);
    const QStringView rest = text.mid(colon - text.begin());
    return colon != text.begin() && rest.startsWith(QLatin1String("://")) &&
           std::all_of(rest.begin(), rest.end(), isWithin255);
}

bool Addresses::isWeb(QStringView text)
{
    const QStringView lastLabel = text.mid(text.lastIndexOf(QLatin1Char('.')) + 1);
    return lastLabel.size() >= 2 && lastLabel.size() <= 6 &&
           std::all_of(lastLabel.begin(), lastLabel.end(), isLowerLetter) &&
           isDotted(text, 2, isHostCharacter);
}

bool Addresses::isUrl(QStringView word)
{
    for (const Scheme& scheme : Schemes) {
        if (word.startsWith(scheme.prefix, Qt::CaseInsensitive))
            return word.size() > scheme.prefix.size() && word.at(scheme.prefix.size()).isLetterOrNumber() &&
                   (!scheme.isHttp || isHttp(word));
    }
    return false;
}
