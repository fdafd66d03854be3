#pragma once

#include "support/Modems.h"

#include <QDateTime>
#include <QLocale>

class OperatorNames;
class Units;

/// When the connection was established; invalid if unknown.
QDateTime connectedSince(const Modem& modem);

/// A moment and the time since then, "14:05 (0:12:31)"; a moment on another day has its date.
QString sinceText(const QDateTime& since, const QDateTime& now, const QLocale& locale);

/// What the page says about network and connection, in the user's language; empty strings where nothing is known.
struct Facts
{
    QString network;
    QString technology;
    QString signal;
    QString roaming;
    QString address;
    QString traffic; ///< in both directions
    QString volume;  ///< the sum of both
};

Facts readFacts(const Modem& modem, const OperatorNames& names, const Units& units);
