#include "support/DialString.h"

#include <algorithm>

namespace {

constexpr int LongestNumber = 32;

bool isDigit(QChar character)
{
    return character >= QLatin1Char('0') && character <= QLatin1Char('9');
}

/// Also the invisible characters and the dashes that come along when a number is copied from a document.
bool isSeparator(QChar character)
{
    return character.isSpace() || QLatin1String("./()").contains(character) ||
           character.category() == QChar::Punctuation_Dash || character.category() == QChar::Other_Format;
}

/// Digits of all scripts as dialled ones: Arabic keyboards have their own.
QChar withLatinDigit(QChar character)
{
    return character.isDigit() ? QChar(QLatin1Char(char('0' + character.digitValue()))) : character;
}

bool canBeDialled(const QString& dialled)
{
    const auto first = dialled.startsWith(QLatin1Char('+')) ? dialled.begin() + 1 : dialled.begin();
    const auto isKey = [](QChar character) {
        return isDigit(character) || QLatin1String("*#").contains(character);
    };
    return dialled.size() <= LongestNumber && std::all_of(first, dialled.end(), isKey) &&
           std::any_of(first, dialled.end(), isDigit);
}

} // namespace

QString dialString(const QString& number)
{
    QString dialled = number;
    const auto end = std::remove_if(dialled.begin(), dialled.end(), isSeparator);
    dialled.truncate(int(end - dialled.begin()));
    std::transform(dialled.begin(), dialled.end(), dialled.begin(), withLatinDigit);
    return canBeDialled(dialled) ? dialled : QString();
}

bool isServiceCode(const QString& dialString)
{
    const bool hasStart = dialString.startsWith(QLatin1Char('*')) || dialString.startsWith(QLatin1Char('#'));
    return hasStart && dialString.endsWith(QLatin1Char('#'));
}

QString unmirrored(const QString& dialString)
{
    constexpr QChar leftToRightIsolate(0x2066);
    constexpr QChar popDirectionalIsolate(0x2069);
    return leftToRightIsolate + dialString + popDirectionalIsolate;
}
