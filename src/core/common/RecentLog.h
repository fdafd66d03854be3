#pragma once

#include "skylume_global.h"

#include <QStringList>

/// The latest lines of the log, which a user can hand to support. Thread-safe.
namespace RecentLog {

constexpr int MostLines = 500;
constexpr int LongestLine = 1000; ///< in characters; the rest is cut off

/// Keeps every line that is logged from now on, and passes it on to the message handler that was installed
/// before. Call it once, before there are other threads.
SKYLUME_EXPORT void start();

/// The latest lines, the oldest first, each after its time. Empty before start().
SKYLUME_EXPORT QStringList lines();

} // namespace RecentLog
