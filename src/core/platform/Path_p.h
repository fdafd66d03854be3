#pragma once

#include "skylume_global.h"

#include <filesystem>

class QString;

/// Paths in the forms that others than Qt take.
namespace Platform {

/// Room for the longest path and its terminating zero.
constexpr int PathCapacity = 260;

/// Resolves "." and ".." in a path by its text alone: no file is looked at, links are not followed.
///
/// The system's own separators count: the backslash on Windows, the slash elsewhere. ".." directly below the
/// root is dropped. What is left of a relative path that leads nowhere differs: Windows makes it the root,
/// elsewhere it stays relative, so that "../a" is "../a" and "a/.." is ".".
/// @param path      zero-terminated; null is refused
/// @param canonical receives the result, zero-terminated; empty on failure
/// @return false for a path of PathCapacity or more characters, which is not cut, and for null. Any thread.
SKYLUME_EXPORT bool canonicalisePath(const char* path, char (&canonical)[PathCapacity]);

/// A path for the standard library's file functions, whose time stamps cost a fraction of Qt's, which are
/// converted to local time. Takes any text, other than the path's own constructors, which throw at some.
/// Any thread.
SKYLUME_EXPORT std::filesystem::path nativePath(const QString& path);

} // namespace Platform
