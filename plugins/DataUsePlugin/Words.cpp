#include "Words.h"

#include "DataLimit.h"
#include "Period.h"
#include "support/Numbers.h"
#include "support/Text.h"
#include "support/Units.h"

#include <QGuiApplication>

namespace {

constexpr QChar FirstStrongIsolate(0x2068);
constexpr QChar PopDirectionalIsolate(0x2069);
constexpr QChar RightToLeftMark(0x200f);

bool isMirrored()
{
    return QGuiApplication::layoutDirection() == Qt::RightToLeft;
}

} // namespace

QString isolated(const QString& part)
{
    return isMirrored() ? FirstStrongIsolate + part + PopDirectionalIsolate : part;
}

QString dateText(const QDate& day)
{
    return isolated(languageLocale().toString(day, QLocale::ShortFormat));
}

QString periodText(const Period& period)
{
    const QString days = text("IDS_DATA_FROM_TO").arg(dateText(period.first), dateText(period.last));
    return isMirrored() ? RightToLeftMark + days : days; // labels would read bare numbers from left to right
}

QString usageText(quint64 used, quint64 limit, const Units& units)
{
    if (limit == 0)
        return units.volume(used);
    return text("IDS_DATA_OF_LIMIT")
        .arg(isolated(units.volume(used)), isolated(units.shortVolume(limit)),
             numberText(shareOf(used, limit)));
}
