#pragma once

#include "skylume_global.h"

#include <QByteArray>
#include <QLoggingCategory>
#include <QMessageLogger>

/// Log lines of the core library: printf-style texts in Qt's category "default".
///
///     LOG_DEBUG("%s: %s: %s loaded", LOG_FILE, LOG_FUNCTION, qUtf8Printable(clsid));
///
/// Nothing between the parentheses is evaluated while the level is off: a line then costs one flag test.
/// Texts are UTF-8 (qUtf8Printable), which is what Qt's message logger expects for "%s".
namespace Log {

/// Qt's default category; asked once, since it lives as long as the process.
inline const QLoggingCategory& category()
{
    static const QLoggingCategory* const defaultCategory = QLoggingCategory::defaultCategory();
    return *defaultCategory;
}

/// The current time as "hh:mm:ss:zzz".
SKYLUME_EXPORT QByteArray timeText();

} // namespace Log

/// Source file of the line, relative to the source root.
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
