#pragma once

#include "skylume_global.h"

#include <QString>

/// Starting other programs.
namespace Platform {

/// The name to use for starting a program in the application's folder. May be called from any thread.
///
/// On Windows this is the bare name, because the application's folder is searched first. Elsewhere it is the whole
/// path, because bare names are searched in PATH only.
/// @param folder the application's folder
/// @param name   file name of the program, including its suffix
SKYLUME_EXPORT QString programBeside(const QString& folder, const QString& name);

} // namespace Platform
