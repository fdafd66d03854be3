#pragma once

#include "support/Fault.h"

#include <QStringList>

/// Checks language files, plugin by plugin, against the reference language.
///
/// @param paths     language files, and folders that are searched with all that is below them
/// @param reference code of the language that the others are compared with
/// @param languages codes of the languages that every plugin must have
/// @return what is wrong, in the order of the files' names
Faults checkLanguages(const QStringList& paths, const QString& reference, const QStringList& languages);
