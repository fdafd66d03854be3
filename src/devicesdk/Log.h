#pragma once

#include <QLoggingCategory>

/// The log category of the device service, "skylume.devicesdk". Debug lines are off by default.
Q_DECLARE_LOGGING_CATEGORY(logDeviceSdk)
