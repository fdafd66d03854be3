#pragma once

#include <functional>

class ModemCalls;
class QString;
struct Request;

/// The choice of the network. Call these on the thread of `calls`; they return at once, and its signal ended() reports the
/// end.
namespace RegistrationRequests {

/// Looks for networks. The text of the end lists them, see QRVL_DevSrv_ScanNetworks().
/// @param modem its path, here and below
void scan(ModemCalls& calls, const Request& request, const QString& modem);

/// Registers the modem in the network that is the target of the request; without one the modem chooses.
/// @param chosen called when the modem has registered, before the end is reported; not after a failure
void registerIn(ModemCalls& calls, const Request& request, const QString& modem,
                const std::function<void()>& chosen);

} // namespace RegistrationRequests
