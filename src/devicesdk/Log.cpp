#include "Log.h"

Q_LOGGING_CATEGORY(logDeviceSdk, "skylume.devicesdk", QtWarningMsg)
