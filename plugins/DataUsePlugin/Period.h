#pragma once

#include <QDate>

/// A month of a tariff.
struct Period
{
    QDate first;
    QDate last;
};

/// The period that contains a day.
/// @param firstDay the day of the month on which periods begin, 1 to 31; in shorter months it is the last day
Period periodOf(const QDate& day, int firstDay);
