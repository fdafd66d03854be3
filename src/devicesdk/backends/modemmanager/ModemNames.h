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

/// The fastest of the technologies; empty if there is none.
QString technology(uint flags);

} // namespace ModemNames
