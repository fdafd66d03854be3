#pragma once

#include "devices/Modem.h"

#include <QString>
#include <QStringList>

class IniDocument;

/// The simulator's file. It has a section "modem NAME" for each modem, a section "message ID" for each text
/// message, and a section "ussd CODE" for each service code. The file that is shipped explains the keys.
///
///     [modem Lume S1]
///     model = Lume S1
///     imsi = 001010123456789
///     state = attached
///     network = 26201
///     signal = 80
///
///     [message 1]
///     modem = Lume S1
///     sender = +491700000000
///     time = 2024-02-29T17:05:00
///     text = Hello
///
///     [ussd *100#]
///     answer = 1: balance, 2: tariff
///     asks = true
///
///     [ussd *100# 1]
///     answer = Your balance is 4.20
///
///     [network 26202]
///     name = bluewave
///     technology = lte
///     forbidden = true
///
/// "model" and "state" (attached, detached, rejected or failed) are required. Identifiers of messages contain
/// no spaces. Keys with the names of status values are reported as they are, see
/// QRVL_DevSrv_GetStatusValue(); "received" and "sent" are the values at which the counters start when the
/// modem is attached. "answer-time" and "request-time" are in milliseconds, at most 4999 and 59999. Other
/// sections and keys are ignored.
namespace SimulatorFile {

/// Returns the modems in the order of the file, with id 0, and appends what is wrong to `errors`.
Modems read(const IniDocument& document, QStringList& errors);

/// The section of the modem with that name.
QString sectionOf(const QString& name);

/// The section of the message with that identifier.
QString messageSectionOf(const QString& identifier);

/// An identifier that no message has.
QString freeMessage(const IniDocument& document);

/// The section of the answer to service codes, separated by spaces, that were sent in one dialogue.
QString ussdSectionOf(const QString& codes);

/// The section of the network with that code.
QString networkSectionOf(const QString& code);

/// The result of the C interface for a value of the key "failure"; QRVL_OK for an empty one.
long failureOf(const QString& name);

/// "attached", "detached", "rejected" or "failed".
QString stateText(Modem::State state);

} // namespace SimulatorFile
