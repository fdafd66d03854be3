#pragma once

#include "devices/Modem.h"
#include "devices/Request.h"

class IniDocument;

/// How simulated modems carry out requests: they change the simulator's file.
namespace SimulatedRequest {

/// Carries out a request of the modem with that name. `dialogue` is the service codes that were sent since the
/// network's dialogue began; it is empty without one.
RequestEnd carryOut(const Request& request, const QString& modem, QString& dialogue, IniDocument& document);

/// Confirms the delivery of a message that was sent.
void deliver(const QString& identifier, IniDocument& document);

/// The values of the file with those that follow from them: what the modem reports. Values that need the SIM
/// are missing while it is locked or absent.
void completeValues(Modem& modem);

} // namespace SimulatedRequest
