#pragma once

#include <QLatin1String>

/// Customisation keys: what rules of the plugin configuration file belong to. The key of a modem is its name.
namespace CustomisationKeys {

constexpr QLatin1String Imsi("IMSI"); ///< followed by the first digits of an IMSI
constexpr QLatin1String Gid("GID");   ///< followed by the name of a SIM card's group

} // namespace CustomisationKeys
