#pragma once

#include <QString>

/// Whether a library file is mapped into this process.
/// @param fileName name of the file without its folder
bool isLibraryInMemory(const QString& fileName);
