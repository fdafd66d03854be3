#pragma once

#include "skylume_global.h"

/// The computer's language as Windows numbers languages: 0x0409 is American English, 0x0407 German in
/// Germany. Language areas and operator customisations use these numbers on every system.
namespace Platform {

/// The language that the system was set up with.
///
/// On Linux it is LANG of /etc/locale.conf or, where that file sets none, of /etc/default/locale. A locale
/// without a country gets its language's usual one ("de" is German in Germany). "C" and "POSIX" count as
/// American English, the language of their texts and of an untranslated Windows.
/// @return the identifier; 0 when nothing is set or the language has no number. Any thread.
SKYLUME_EXPORT quint16 systemLanguageId();

/// The language of the user's regional settings.
///
/// On Linux it is the first of LC_ALL, LC_MESSAGES and LANG in the environment that is not empty, read like
/// the system's.
/// @return as systemLanguageId(). Any thread, as long as none changes the environment.
SKYLUME_EXPORT quint16 userLanguageId();

} // namespace Platform
