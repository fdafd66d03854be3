#pragma once

#include "common/settings/Setting_p.h"

#include <QString>

#include <memory>

/// Strings in and out of the device service's settings functions.
namespace DeviceSettings {

using Read = long (*)(const char16_t* section, const char16_t* key, char16_t** value);

/// A string as the device service takes it; valid until `text` changes or ends.
inline const char16_t* utf16(const QString& text)
{
    return reinterpret_cast<const char16_t*>(text.utf16());
}

/// Reads a setting with one of the service's functions.
/// @param value receives the string on success; unchanged on failure and when the service returns no buffer
/// @return the service's result, 0 for success
inline long read(Read function, const QString& section, const QString& key, QString& value)
{
    char16_t* buffer = nullptr;
    const long result = function(utf16(section), utf16(key), &buffer);
    if (result == 0 && buffer) {
        const std::unique_ptr<char16_t[]> owned(buffer); // the caller's on success only
        value = QString(reinterpret_cast<const QChar*>(buffer));
    }
    return result;
}

inline long read(Read function, const Setting& setting, QString& value)
{
    return read(function, setting.section, setting.key, value);
}

} // namespace DeviceSettings
