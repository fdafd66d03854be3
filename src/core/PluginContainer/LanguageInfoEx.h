#pragma once

#include <QString>

/// A language that the application knows: one "item" of LangAreaForShort.xml.
struct LanguageInfoEx
{
    QString id;        ///< the number that Windows gives the language, in decimal digits: "1033"
    QString lang;      ///< long name, as SysConfig.dat lists it
    QString shortName; ///< underscore, language, country: "_en-us", as the active language is stored
    QString maccode;   ///< the language's code on other systems; these two decide nothing
    QString linuxcode;
};
