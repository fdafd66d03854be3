#pragma once

#include "devices/Request.h"

class FileModem;

/// The networks that simulated modems find: the sections "network CODE" of the simulator's file.
namespace SimulatedNetworks {

/// Finds the networks of the country in which the modem is.
RequestEnd scan(const Request& request, const FileModem& modem);

RequestEnd registerIn(const Request& request, FileModem& modem);

} // namespace SimulatedNetworks
