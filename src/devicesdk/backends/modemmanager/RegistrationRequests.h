#pragma once

#include <functional>

class ModemCalls;
class QString;
struct Request;

/// The choice of the network.
namespace RegistrationRequests {

void scan(ModemCalls& calls, const Request& request, const QString& modem);

/// `chosen` is called when the modem has registered.
void registerIn(ModemCalls& calls, const Request& request, const QString& modem,
                const std::function<void()>& chosen);

} // namespace RegistrationRequests
