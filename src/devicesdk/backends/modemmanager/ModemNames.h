#pragma once

#include "devices/Modem.h"

#include <QString>

/// The status values for ModemManager's numbers, see QRVL_DevSrv_GetStatusValue().
namespace ModemNames {

QString state(Modem::State state);
QString failure(uint reason);
QString registration(uint state);
QString connection(int state);
QString dialogue(uint state);

/// Whether a modem may register in a network that it has found.
QString availability(uint state);

/// Where messages are stored; empty if that is neither the SIM nor the modem.
QString storage(uint storage);

/// The fastest of the technologies; empty if there is none.
QString technology(uint flags);

} // namespace ModemNames
