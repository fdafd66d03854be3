#pragma once

#include "support/Modems.h"

class IPluginContainer;

/// The customisation key to apply for the attached modems, the most specific that has rules:
///
/// 1. "IMSI" and the IMSI, when rules exist for SIM cards of that kind;
/// 2. "GID" and the SIM's group identifier, when the group has rules;
/// 3. the modem's name, with or without rules.
///
/// Without a modem the key is empty: common and operator rules alone. With several none can be preferred;
/// like at the start of the application, that is the name of the modem used last.
///
/// Side effect: asking whether a key has rules leaves the container with the common and operator rules in
/// force. The caller applies the returned key next, through HandleDeviceSwitched().
QString customisationKey(IPluginContainer& container, const Modems& modems);

/// The name of the modem used last; empty without a device manager.
QString lastUsedDevice();
