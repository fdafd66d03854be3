#pragma once

class ModemCalls;
class QString;
struct Request;

/// Service codes.
namespace UssdRequests {

/// Sends a code or, if the network waits for one, an answer.
void send(ModemCalls& calls, const Request& request, const QString& modem);

void cancel(ModemCalls& calls, const Request& request, const QString& modem);

} // namespace UssdRequests
