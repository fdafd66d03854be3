#pragma once

#include <QLocale>
#include <QString>

// Numbers as the current language writes them: its digits, its decimal point. Any thread.

/// The conventions of the current language.
QLocale languageLocale();

/// A whole number without separators between thousands.
QString numberText(int number);

/// "0:12:31": hours, minutes and seconds.
/// @param seconds negative ones count as 0
QString durationText(qint64 seconds, const QLocale& locale);
