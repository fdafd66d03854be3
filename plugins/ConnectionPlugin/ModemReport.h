#pragma once

#include "Meaning.h"
#include "support/Modems.h"

#include <QDateTime>

class OperatorNames;
class Units;

/// Reads what decides on the state, without the user's settings. A copy is cheap to make; the GUI thread may.
/// @param modem in use; id 0 without one
ConnectionReport readReport(const Modem& modem);

/// When the connection was established; invalid if unknown.
QDateTime connectedSince(const Modem& modem);

/// A moment and the time since then, "14:05 (0:12:31)".
QString sinceText(const QDateTime& since, const QDateTime& now);

/// What the page says about network and connection, in the user's language; empty strings where nothing is known.
struct Facts
{
    QString network;
    QString technology;
    QString signal;
    QString roaming;
    QString address;
    QString traffic;
};

Facts readFacts(const Modem& modem, const OperatorNames& names, const Units& units);
