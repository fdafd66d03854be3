#pragma once

#include "PluginContainer/CustomisationKeys.h"
#include "support/Modems.h"

class IPluginContainer;

/// The customisation key to apply for the attached modems. With one modem see PluginContainer::KeyForModem().
/// Without a modem the key is empty: only the common and operator rules apply. With several modems it is the
/// name of the one used last, as at the start of the application.
///
/// Does not change the container.
QString customisationKey(IPluginContainer& container, const Modems& modems);

/// The name of the modem used last; empty without a device manager.
QString lastUsedDevice();
