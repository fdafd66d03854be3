#pragma once

#include "common/CommonUtils.h"

#include <QLatin1String>

/// The address of a setting in the device service.
struct Setting
{
    QLatin1String section;
    QLatin1String key;

    /// The value in force; empty when there is none. Failures are logged by GetSettings().
    QString value() const { return CommonUtils::GetSettings(section, key); }

    /// Stores a value for this user. Failures are logged by SetSettings().
    void store(const QString& value) const { CommonUtils::SetSettings(section, key, value); }
};

/// Every setting that the library itself reads or writes.
namespace Settings {

/// The operator's customisation name.
constexpr Setting Operator{QLatin1String("customize"), QLatin1String("operator")};

/// The language that the customisation asked for at the last start.
constexpr Setting AdapterType{QLatin1String("customize"), QLatin1String("adaptertype")};

/// "true" once the application has run.
constexpr Setting FirstRunMark{QLatin1String("Startup"), QLatin1String("init")};

/// The active language with an underscore in front: "_en-us".
constexpr Setting ActiveLanguage{QLatin1String("language"), QLatin1String("active")};

/// "false" turns off the keyboard shortcuts in translated strings.
constexpr Setting EnableShortCut{QLatin1String("system"), QLatin1String("EnableShortCut")};

/// "true" lets windows be maximised.
constexpr Setting EnableMaxButton{QLatin1String("system"), QLatin1String("EnableMaxButton")};

/// The name of the compact window's skin.
constexpr Setting MiniSkinName{QLatin1String("MiniSkin"), QLatin1String("Name")};

} // namespace Settings
