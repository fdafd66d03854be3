#pragma once

#include "devices/Request.h"

class IniDocument;

/// How simulated modems carry out requests: they change the simulator's file.
namespace SimulatedRequest {

/// Carries out a request of the modem with that name. `dialogue` is the service codes that were sent since the
/// network's dialogue began; it is empty without one.
RequestEnd carryOut(const Request& request, const QString& modem, QString& dialogue, IniDocument& document);

/// Confirms the delivery of a message that was sent.
void deliver(const QString& identifier, IniDocument& document);

} // namespace SimulatedRequest
