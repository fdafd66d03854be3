#pragma once

#include "support/Modems.h"

class OperatorNames;

/// The name of a value of "technology", such as "LTE (4G)"; the same in all languages.
QString technologyName(const QString& technology);

/// The name of the network in which a modem is registered; empty if it is in none.
QString networkName(const Modem& modem, const OperatorNames& names);
