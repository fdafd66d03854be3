#pragma once

class QDBusError;

namespace DBusResults {

/// The result of the C interface for an error of ModemManager, NetworkManager or the bus.
long resultOf(const QDBusError& error);

} // namespace DBusResults
