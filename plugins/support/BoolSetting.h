#pragma once

#include "common/CommonUtils.h"

/// A setting that is "true" or "false"; any other value is taken for "false". Any thread.
struct BoolSetting
{
    QLatin1String section;
    QLatin1String key;

    bool isSet() const { return CommonUtils::GetSettings(section, key) == QLatin1String("true"); }
    void set(bool value) const
    {
        CommonUtils::SetSettings(section, key, QLatin1String(value ? "true" : "false"));
    }
};
