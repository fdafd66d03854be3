#pragma once

#include "skylume_global.h"

/// The computer's language as a Windows language identifier: 0x0409 is American English, 0x0407 German
/// (Germany). Language areas and operator customisations use these identifiers on every system.
namespace Platform {

/// The system's default language. May be called from any thread.
///
/// On Linux it is LANG from /etc/locale.conf or, if not set there, from /etc/default/locale. A locale without a
/// country gets the most likely one ("de" is German in Germany). "C" and "POSIX" are American English.
/// @return the identifier; 0 when no language is set or it has no identifier
SKYLUME_EXPORT quint16 systemLanguageId();

/// The language of the user's regional settings. May be called from any thread as long as no other thread
/// changes the environment.
///
/// On Linux it is the first of the environment variables LC_ALL, LC_MESSAGES and LANG that is not empty,
/// converted as in systemLanguageId().
/// @return the identifier; 0 when no language is set or it has no identifier
SKYLUME_EXPORT quint16 userLanguageId();

} // namespace Platform
