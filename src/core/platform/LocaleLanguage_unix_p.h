#pragma once

#include "skylume_global.h"

#include <QByteArray>
#include <QStringList>

/// Converts locale names to language identifiers. Exported for the tests.
namespace Platform {

/// The identifier of a locale name: language, country, encoding, modifier ("sr_RS.UTF-8@latin"). 0 for an
/// empty or unknown name.
SKYLUME_EXPORT quint16 languageIdOfLocale(const QByteArray& name);

/// The value of LANG in the first file that sets it. Files consist of lines NAME=VALUE, with or without quotes
/// around the value, and comments that start with "#"; if a name is set twice, the last line applies. Files
/// that cannot be read are skipped.
/// @return empty when no file sets LANG
SKYLUME_EXPORT QByteArray localeOfFiles(const QStringList& files);

} // namespace Platform
