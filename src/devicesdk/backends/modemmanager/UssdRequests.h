#pragma once

class ModemCalls;
class QString;
struct Request;

/// Service codes. Call these on the thread of `calls`; they return at once, and its signal ended() reports the end.
namespace UssdRequests {

/// Sends a code or, if the network waits for one, an answer. The text of the end is what the network says.
void send(ModemCalls& calls, const Request& request, const QString& modem);

/// Ends the dialogue with the network; succeeds if there is none.
void cancel(ModemCalls& calls, const Request& request, const QString& modem);

} // namespace UssdRequests
