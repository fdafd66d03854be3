#pragma once

#include <QString>

/// A known language: one "item" of LangAreaForShort.xml.
struct LanguageInfoEx
{
    QString id;        ///< language identifier of Windows in decimal digits: "1033"
    QString lang;      ///< long name, as SysConfig.dat lists it
    QString shortName; ///< "_en-us", the form in which the active language is stored
    QString maccode;   ///< codes of other systems; not used for the choice
    QString linuxcode;
};
