#pragma once

#include <QLoggingCategory>

/// Log lines of the device service, "skylume.devicesdk": warnings for what is odd; debug lines are off by
/// default.
Q_DECLARE_LOGGING_CATEGORY(logDeviceSdk)
