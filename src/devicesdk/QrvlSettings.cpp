// The settings operations of the C interface, see qrvl.h.

#include "qrvl.h"

#include "Service.h"
#include "TextBuffer.h"
#include "settings/Settings.h"

namespace {

long get(Settings::View view, const char16_t* section, const char16_t* key, char16_t** value)
{
    if (!value)
        return QRVL_ERROR_ARGUMENT;
    *value = nullptr;
    if (!section || !key)
        return QRVL_ERROR_ARGUMENT;
    const bool isFound = Service::settings().get(
        view, SettingName(section, key), [value](const QString& text) { *value = newTextBuffer(text); });
    return isFound ? QRVL_OK : QRVL_ERROR_NOT_FOUND;
}

} // namespace

long QRVL_GetSettings(const char16_t* section, const char16_t* key, char16_t** value)
{
    return get(Settings::View::Merged, section, key, value);
}

long QRVL_GetUserSettings(const char16_t* section, const char16_t* key, char16_t** value)
{
    return get(Settings::View::User, section, key, value);
}

long QRVL_GetIniSettings(const char16_t* section, const char16_t* key, char16_t** value)
{
    return get(Settings::View::Defaults, section, key, value);
}

long QRVL_SetSettings(const char16_t* section, const char16_t* key, const char16_t* value)
{
    if (!section || !key || !value)
        return QRVL_ERROR_ARGUMENT;
    const bool canWrite = Service::settings().set(textOf(section), textOf(key), textOf(value));
    return canWrite ? QRVL_OK : QRVL_ERROR_STORE;
}
