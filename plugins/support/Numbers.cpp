#include "support/Numbers.h"

#include "Change/Change.h"

#include <algorithm>

QLocale languageLocale()
{
    QLocale locale(Change::GetLangName());
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    return locale;
}

QString numberText(int number)
{
    return languageLocale().toString(number);
}

QString durationText(qint64 seconds, const QLocale& locale)
{
    constexpr int minute = 60;
    constexpr int hour = 60 * minute;
    const auto twoDigits = [&locale](qint64 number) {
        return locale.toString(number).rightJustified(2, locale.zeroDigit());
    };
    const qint64 all = std::max<qint64>(0, seconds);
    return QStringLiteral("%1:%2:%3")
        .arg(locale.toString(all / hour), twoDigits(all % hour / minute), twoDigits(all % minute));
}
