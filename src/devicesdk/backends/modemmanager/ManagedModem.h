#pragma once

#include "backends/modemmanager/Customization.h"
#include "devices/Modem.h"

#include <QVariant>

class DBusMirror;

/// What ModemManager reports about a modem, in the terms of the C interface.
namespace ManagedModem {

/// The modem at that path, with its values but without id and messages.
Modem modemAt(const DBusMirror& mirror, const QString& path, const Customization& rules);

/// The path of its SIM; empty without one.
QString simOf(const DBusMirror& mirror, const QString& path);

/// Distinguishes modems, also across restarts of ModemManager.
QString identityOf(const DBusMirror& mirror, const QString& path);

/// Whether the SIM must be unlocked first.
bool isLocked(const DBusMirror& mirror, const QString& path);

/// How many wrong PUKs the SIM still accepts; empty if that is unknown.
QString pukTries(const DBusMirror& mirror, const QString& path);

/// A property of the modem itself.
QVariant valueOf(const DBusMirror& mirror, const QString& path, const char* property);

} // namespace ManagedModem
