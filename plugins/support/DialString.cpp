#include "support/DialString.h"

#include <algorithm>

namespace {

constexpr int LongestNumber = 32;

bool isDigit(QChar sign)
{
    return sign >= QLatin1Char('0') && sign <= QLatin1Char('9');
}

bool isSeparator(QChar sign)
{
    return sign.isSpace() || QLatin1String("-./()").contains(sign);
}

bool canBeDialled(const QString& dialled)
{
    const auto first = dialled.startsWith(QLatin1Char('+')) ? dialled.begin() + 1 : dialled.begin();
    const auto isKey = [](QChar sign) {
        return isDigit(sign) || QLatin1String("*#").contains(sign);
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
    return canBeDialled(dialled) ? dialled : QString();
}

bool isServiceCode(const QString& dialString)
{
    const bool hasStart = dialString.startsWith(QLatin1Char('*')) || dialString.startsWith(QLatin1Char('#'));
    return hasStart && dialString.endsWith(QLatin1Char('#'));
}
