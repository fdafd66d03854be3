#pragma once

#include <QString>

/// The folder for files that plugins keep for the user, other than settings: "skylume" in $XDG_DATA_HOME or ~/.local/share
/// on Linux, in %LOCALAPPDATA% on Windows. The environment variable QRVL_USER_DIR overrides it. It may not exist yet. Any
/// thread.
QString userFilesFolder();
