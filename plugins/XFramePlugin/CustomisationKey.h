#pragma once

#include "support/Modems.h"

#include <QLatin1String>

class IPluginContainer;

// What keys of SIM cards begin with; the key of a modem is its name.
constexpr QLatin1String ImsiPrefix("IMSI");
constexpr QLatin1String GidPrefix("GID");

/// The customisation key to apply for the attached modems. With one modem it is the most specific of these:
///
/// 1. ImsiPrefix and the IMSI, when rules exist for SIM cards of that kind;
/// 2. GidPrefix and the SIM's group identifier, when the plugin configuration file lists the group;
/// 3. the modem's name, with or without rules.
///
/// Without a modem the key is empty: only the common and operator rules apply. With several modems it is the
/// name of the one used last, as at the start of the application.
///
/// Does not change the container.
QString customisationKey(IPluginContainer& container, const Modems& modems);

/// The name of the modem used last; empty without a device manager.
QString lastUsedDevice();
