#pragma once

#include "skylume_global.h"

#include <QString>

/// The language of the application and the texts of every plugin. All operations are static.
///
/// Language files are not read yet: every plugin answers as one without a file for the language.
class SKYLUME_EXPORT Change
{
public:
    /// Loads a plugin's texts for the current language.
    /// @return whether the plugin has a file for it
    static bool LoadLangFile(QString const& plugin);

    /// A text of a plugin, for use during the start.
    /// @return empty when the plugin has no such text
    static QString Stratup_tr(QString const& id, QString const& plugin);

    /// Makes a language current and stores it as the active one.
    /// @param name language and country code such as "en-us"
    static void SetLangName(QString const& name);

    /// The current language, for example "en-us".
    static QString GetLangName();

    /// Makes the stored active language current.
    /// @return its name; empty when none is stored
    static QString GetSettingDefaultLang();
};
