#pragma once

#include <QString>

#include <memory>

/// Texts in and out of the device service's settings functions.
namespace DeviceSettings {

using Read = long (*)(const char16_t* section, const char16_t* key, char16_t** value);

/// A text as the device service takes it. Valid as long as `text` is and is not changed.
inline const char16_t* utf16(const QString& text)
{
    return reinterpret_cast<const char16_t*>(text.utf16());
}

/// Reads a setting with one of the service's functions.
/// @param value receives the text on success and stays as it is otherwise
/// @return the service's result; 0 with no buffer counts as it stands and leaves `value` alone
inline long read(Read function, const QString& section, const QString& key, QString& value)
{
    char16_t* buffer = nullptr;
    const long result = function(utf16(section), utf16(key), &buffer);
    const std::unique_ptr<char16_t[]> owned(buffer); // ours from here on, whatever the result
    if (result == 0 && buffer)
        value = QString(reinterpret_cast<const QChar*>(buffer));
    return result;
}

} // namespace DeviceSettings
