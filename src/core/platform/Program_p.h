#pragma once

#include "skylume_global.h"

#include <QString>

/// Other programs.
namespace Platform {

/// The name under which to start a program that lies in the application's folder.
///
/// Windows looks for a bare name in the application's folder first. Other systems look for one along PATH
/// only and need the folder named.
/// @param folder the application's folder
/// @param name   file name of the program, with its suffix. Any thread.
SKYLUME_EXPORT QString programBeside(const QString& folder, const QString& name);

} // namespace Platform
