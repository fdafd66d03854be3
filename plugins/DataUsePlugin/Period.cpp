#include "Period.h"

#include <algorithm>

namespace {

/// The day on which a period begins in the month of `day`.
QDate beginningIn(const QDate& day, int firstDay)
{
    return {day.year(), day.month(), std::min(firstDay, day.daysInMonth())};
}

} // namespace

Period periodOf(const QDate& day, int firstDay)
{
    const QDate thisMonth = beginningIn(day, firstDay);
    const QDate first = thisMonth <= day ? thisMonth : beginningIn(day.addMonths(-1), firstDay);
    return {first, beginningIn(first.addMonths(1), firstDay).addDays(-1)};
}
