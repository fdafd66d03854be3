#pragma once

#include <QLatin1String>

/// The identifier of this plugin in pluginslib.xml.
constexpr QLatin1String ThisClsid("C43A8D5E-07B1-4F92-86DA-3E51F9B27A60");
