#pragma once

#include "devices/Modem.h"

#include <QString>
#include <QStringList>

class IniDocument;

/// The simulator's file: one section "modem NAME" for each modem, and one section "message ID" for each text
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
/// "model" and "state" (attached, detached or rejected) must be there, and identifiers of messages have no
/// blank. Of the keys from "network" to "send-rate" see QRVL_DevSrv_GetStatusValue(); "received" and "sent"
/// are what is transferred before the simulation begins, "answer-time" is in milliseconds, 4999 at most.
/// Other sections and keys have no meaning.
namespace SimulatorFile {

/// The modems in the order of the file, with id 0, and what is wrong with the document in `errors`.
Modems read(const IniDocument& document, QStringList& errors);

/// The section of the modem of that name.
QString sectionOf(const QString& name);

/// The section of the message of that identifier.
QString messageSectionOf(const QString& identifier);

/// "attached", "detached" or "rejected".
QString stateText(Modem::State state);

} // namespace SimulatorFile
