#pragma once

#include "support/DetailsCard.h"
#include "support/Modems.h"

class OperatorNames;

/// What is known about a modem, in the current language. The GUI thread may read it.
namespace ModemDetails {

QVector<Detail> ofModem(const Modem& modem);

/// The SIM card without what identifies it, see SimInfoPlugin.
QVector<Detail> ofSim(const Modem& modem);

QVector<Detail> ofNetwork(const Modem& modem, const OperatorNames& names);

} // namespace ModemDetails
