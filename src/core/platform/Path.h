#pragma once

#include "skylume_global.h"

/// Paths in the system's 8-bit encoding.
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

} // namespace Platform
