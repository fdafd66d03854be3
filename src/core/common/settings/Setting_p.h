#pragma once

#include "common/CommonUtils.h"

#include <QLatin1String>

/// The address of a setting in the device service.
struct Setting
{
    QLatin1String section;
    QLatin1String key;

    /// The effective value; empty if there is none. GetSettings() logs failures.
    QString value() const { return CommonUtils::GetSettings(section, key); }

    /// Stores a value for this user. SetSettings() logs failures.
    void store(const QString& value) const { CommonUtils::SetSettings(section, key, value); }
};

/// The settings that the library itself reads or writes.
namespace Settings {

/// The customisation name of the operator.
constexpr Setting Operator{QLatin1String("customize"), QLatin1String("operator")};

/// The language that the customisation requested at the last start.
constexpr Setting AdapterType{QLatin1String("customize"), QLatin1String("adaptertype")};

/// "true" once the application has run.
constexpr Setting FirstRunMark{QLatin1String("Startup"), QLatin1String("init")};

/// "_" and the code of the active language, for example "_en-us".
constexpr Setting ActiveLanguage{QLatin1String("language"), QLatin1String("active")};

/// "false" disables keyboard shortcuts in translated strings.
constexpr Setting EnableShortCut{QLatin1String("system"), QLatin1String("EnableShortCut")};

/// "true" lets windows be maximised.
constexpr Setting EnableMaxButton{QLatin1String("system"), QLatin1String("EnableMaxButton")};

/// Begin with "1" where voice and video calls are offered.
constexpr Setting CallVoice{QLatin1String("callui"), QLatin1String("callvoice")};
constexpr Setting CallVideo{QLatin1String("callui"), QLatin1String("callvideo")};

/// The name of the skin of the compact window.
constexpr Setting MiniSkinName{QLatin1String("MiniSkin"), QLatin1String("Name")};

} // namespace Settings
