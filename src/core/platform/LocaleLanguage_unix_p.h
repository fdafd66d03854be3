#pragma once

#include "skylume_global.h"

#include <QByteArray>
#include <QStringList>

/// How language identifiers come about where the system names its locales by text. Exported for the tests.
namespace Platform {

/// Identifier of a locale as the environment names it: language, country, encoding, modifier
/// ("sr_RS.UTF-8@latin"). 0 for an empty or unknown name.
SKYLUME_EXPORT quint16 languageIdOfLocale(const QByteArray& name);

/// LANG as the first of the files sets it that sets it at all: lines NAME=VALUE as a shell would read them,
/// the value bare or in quotes, "#" before a comment, the last line of a name counts. Empty when none does;
/// files that cannot be read are passed over.
SKYLUME_EXPORT QByteArray localeOfFiles(const QStringList& files);

} // namespace Platform
