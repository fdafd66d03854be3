#pragma once

#include "support/Modems.h"

class IPluginContainer;

/// The customisation key to apply for the attached modems. With one modem it is the most specific of these:
///
/// 1. "IMSI" and the IMSI, when rules exist for SIM cards of that kind;
/// 2. "GID" and the SIM's group identifier, when the plugin configuration file lists the group;
/// 3. the modem's name, with or without rules.
///
/// Without a modem the key is empty: only the common and operator rules apply. With several modems it is the
/// name of the one used last, as at the start of the application.
///
/// Does not change the container.
QString customisationKey(IPluginContainer& container, const Modems& modems);

/// The name of the modem used last; empty without a device manager.
QString lastUsedDevice();
