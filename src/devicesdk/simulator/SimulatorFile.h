#pragma once

#include "devices/Modem.h"

#include <QString>
#include <QStringList>

class IniDocument;

/// The simulator's file. It has a section "modem NAME" for each modem and a section "message ID" for each text
/// message.
///
///     [modem Lume S1]
///     model = Lume S1
///     imsi = 001010123456789
///     gid =
///     customize = northtel
///     port = sim1
///     state = attached
///     network = 26201
///     signal = 80
///     receive-rate = 350000
///     send-rate = 40000
///     received = 0
///     sent = 0
///     answer-time = 100
///
///     [message 1]
///     modem = Lume S1
///     sender = +491700000000
///     time = 2024-02-29T17:05:00
///     text = Hello
///
/// "model" and "state" (attached, detached or rejected) are required. Identifiers of messages contain no
/// spaces. For "network" to "send-rate" see QRVL_DevSrv_GetStatusValue(); "received" and "sent" are the values
/// at which the counters start when the modem is attached. "answer-time" is in milliseconds, at most 4999.
/// Other sections and keys are ignored.
namespace SimulatorFile {

/// Returns the modems in the order of the file, with id 0, and appends what is wrong to `errors`.
Modems read(const IniDocument& document, QStringList& errors);

/// The section of the modem with that name.
QString sectionOf(const QString& name);

/// The section of the message with that identifier.
QString messageSectionOf(const QString& identifier);

/// "attached", "detached" or "rejected".
QString stateText(Modem::State state);

} // namespace SimulatorFile
