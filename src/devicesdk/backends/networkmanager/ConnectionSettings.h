#pragma once

#include "backends/dbus/DBusTypes.h"

struct Request;

/// Settings of NetworkManager's connections.
namespace ConnectionSettings {

/// The settings of a new connection. NetworkManager forgets it when it ends, so no password is stored.
VariantMaps newFor(const Request& request, const QString& password);

} // namespace ConnectionSettings
