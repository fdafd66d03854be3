#pragma once

#include "devices/Modem.h"

#include <QString>
#include <QStringList>

class IniDocument;

/// The simulator's file: one section "modem NAME" for each modem.
///
///     [modem Lume S1]
///     model = Lume S1
///     imsi = 001010123456789
///     gid =
///     customize = northtel
///     port = sim1
///     state = attached
///
/// "model" and "state" (attached, detached or rejected) must be there. Other sections and keys have no
/// meaning.
namespace SimulatorFile {

/// The modems in the order of the file, with id 0, and what is wrong with the document in `errors`.
Modems read(const IniDocument& document, QStringList& errors);

/// The section of the modem of that name.
QString sectionOf(const QString& name);

/// "attached", "detached" or "rejected".
QString stateText(Modem::State state);

} // namespace SimulatorFile
