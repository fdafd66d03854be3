#pragma once

#include "skylume_global.h"

#include <filesystem>

class QString;

/// Paths for functions other than those of Qt.
namespace Platform {

/// Size of a buffer for the longest path, including its terminating zero.
constexpr int PathCapacity = 260;

/// Resolves "." and ".." in a path without accessing the file system; links are not followed. May be called from
/// any thread.
///
/// Separators are those of the system: the backslash on Windows, the slash elsewhere. ".." directly below the root
/// is removed. Relative paths that resolve to nothing differ: on Windows they become the root, elsewhere they stay
/// relative ("../a" stays "../a", "a/.." becomes ".").
/// @param path      zero-terminated
/// @param canonical receives the zero-terminated result; empty on failure
/// @return false for null and for a path of PathCapacity or more characters
SKYLUME_EXPORT bool canonicalisePath(const char* path, char (&canonical)[PathCapacity]);

/// Converts a path for the standard library, which reads the times of files much faster than Qt. Unlike the
/// constructors of std::filesystem::path, it does not throw for invalid Unicode. May be called from any thread.
SKYLUME_EXPORT std::filesystem::path nativePath(const QString& path);

} // namespace Platform
