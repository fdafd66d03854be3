#pragma once

#include "skylume_global.h"

#include <QByteArray>
#include <QLoggingCategory>
#include <QMessageLogger>

/// Logging of the core library: printf-style lines in Qt's category "default".
///
///     LOG_DEBUG("%s: %s: %s loaded", LOG_FILE, LOG_FUNCTION, qUtf8Printable(clsid));
///
/// The arguments are not evaluated while the level is disabled: a line then costs one test of a flag.
/// Strings are UTF-8 (qUtf8Printable), as Qt's message logger expects for "%s". All of it is thread-safe.
namespace Log {

/// Qt's default category; it exists until the process ends.
inline const QLoggingCategory& category()
{
    static const QLoggingCategory* const defaultCategory = QLoggingCategory::defaultCategory();
    return *defaultCategory;
}

/// The current local time as "hh:mm:ss:zzz".
SKYLUME_EXPORT QByteArray timeText();

} // namespace Log

/// The source file, relative to the source root.
#define LOG_FILE __FILE__
#define LOG_FUNCTION __func__
#define LOG_TIME Log::timeText().constData()

#define SKYLUME_LOG(isEnabled, level, ...)                                                                   \
    do {                                                                                                     \
        if (Q_UNLIKELY(Log::category().isEnabled()))                                                         \
            QMessageLogger(__FILE__, __LINE__, Q_FUNC_INFO, Log::category().categoryName())                  \
                .level(__VA_ARGS__);                                                                         \
    } while (false)

#define LOG_DEBUG(...) SKYLUME_LOG(isDebugEnabled, debug, __VA_ARGS__)
#define LOG_WARNING(...) SKYLUME_LOG(isWarningEnabled, warning, __VA_ARGS__)
#define LOG_CRITICAL(...) SKYLUME_LOG(isCriticalEnabled, critical, __VA_ARGS__)
