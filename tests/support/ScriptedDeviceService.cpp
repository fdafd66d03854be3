#include "ScriptedDeviceService.h"

#include "TextBuffer.h"

#include <algorithm>
#include <thread>

using Service = ScriptedDeviceService;

namespace {

enum CallbackList { Initialisation, Manager };

Guarded<Service::State>::Access locked()
{
    return Service::instance().lock();
}

/// Records a call and returns its result.
long record(const char* operation, const QString& arguments = {})
{
    auto state = locked();
    state->calls.append(QLatin1String(operation) + arguments);
    return state->results.value(QLatin1String(operation), QRVL_OK);
}

long read(const char* operation, Service::View view, const char16_t* section, const char16_t* key,
          char16_t** value)
{
    static char16_t notForTheCaller[] = u"error"; // freeing it would end the process
    auto state = locked();
    const QPair<QString, QString> name(textOf(section), textOf(key));
    const bool isFound = state->settings[view].contains(name);
    const QString text = state->settings[view].value(name);
    const long result =
        state->results.value(QLatin1String(operation), isFound ? QRVL_OK : QRVL_ERROR_NOT_FOUND);
    if (result != QRVL_OK)
        *value = isFound ? notForTheCaller : nullptr;
    else
        *value = text.isNull() ? nullptr : newTextBuffer(text);
    return result;
}

long add(const char* operation, CallbackList list, QRVL_DevCallback callback)
{
    const long result = record(operation);
    if (result == QRVL_OK)
        locked()->callbacks.emplace(list, callback);
    return result;
}

long remove(const char* operation, CallbackList list, QRVL_DevCallback callback)
{
    const long result = record(operation);
    const bool isRemoved = locked()->callbacks.erase({list, callback}) > 0;
    return result == QRVL_OK && !isRemoved ? long(QRVL_ERROR_NOT_FOUND) : result;
}

} // namespace

// ---- What tests use

Service& Service::instance()
{
    static Service service;
    return service;
}

void Service::fire(std::initializer_list<int> events)
{
    const auto registrations = locked()->callbacks;
    std::set<QRVL_DevCallback> callbacks;
    for (const auto& registration : registrations)
        callbacks.insert(registration.second);
    std::thread service([&] {
        for (const int event : events) {
            for (const QRVL_DevCallback callback : callbacks)
                callback(event, nullptr);
        }
    });
    service.join();
}

// ---- The C interface

long QRVL_GetSettings(const char16_t* section, const char16_t* key, char16_t** value)
{
    return read("QRVL_GetSettings", Service::Merged, section, key, value);
}

long QRVL_GetUserSettings(const char16_t* section, const char16_t* key, char16_t** value)
{
    return read("QRVL_GetUserSettings", Service::User, section, key, value);
}

long QRVL_GetIniSettings(const char16_t* section, const char16_t* key, char16_t** value)
{
    return read("QRVL_GetIniSettings", Service::Ini, section, key, value);
}

long QRVL_SetSettings(const char16_t* section, const char16_t* key, const char16_t* value)
{
    const QStringList words = {textOf(section), textOf(key), textOf(value)};
    const long result =
        record("QRVL_SetSettings", QLatin1Char('(') + words.join(QStringLiteral(", ")) + QLatin1Char(')'));
    for (const Service::View view : {Service::User, Service::Merged}) {
        if (result == QRVL_OK)
            Service::instance().setSetting(words[0], words[1], words[2], view);
    }
    return result;
}

long QRVL_DevSrv_RegisterDevInitEventCallback(QRVL_DevCallback callback)
{
    return add("QRVL_DevSrv_RegisterDevInitEventCallback", Initialisation, callback);
}

long QRVL_DevSrv_RegisterDevMgrCallback(QRVL_DevCallback callback)
{
    return add("QRVL_DevSrv_RegisterDevMgrCallback", Manager, callback);
}

long QRVL_DevSrv_UnRegisterDevInitEventCallback(QRVL_DevCallback callback)
{
    return remove("QRVL_DevSrv_UnRegisterDevInitEventCallback", Initialisation, callback);
}

long QRVL_DevSrv_UnRegisterDevMgrCallback(QRVL_DevCallback callback)
{
    return remove("QRVL_DevSrv_UnRegisterDevMgrCallback", Manager, callback);
}

long QRVL_DevSrv_StartDetect()
{
    return record("QRVL_DevSrv_StartDetect");
}

long QRVL_DevSrv_GetAvailableDeviceList(QRVL_AvailableDeviceList* list)
{
    const long result = record("QRVL_DevSrv_GetAvailableDeviceList");
    if (result != QRVL_OK)
        return result;
    const QStringList names = locked()->devices;
    list->count = uint32_t(names.size());
    for (int i = 0; i < std::min(names.size(), QRVL_MAX_DEVICES); ++i)
        qstrncpy(list->devices[i].name, names.at(i).toLocal8Bit().constData(), QRVL_DEVICE_NAME_SIZE);
    return QRVL_OK;
}

long QRVL_DevSrv_GetCustomizeName(char* name)
{
    qstrncpy(name, locked()->customizeName.constData(), QRVL_CUSTOMIZE_NAME_SIZE);
    return record("QRVL_DevSrv_GetCustomizeName");
}

long QRVL_DevSrv_GetImsiInfo(char* imsi)
{
    qstrncpy(imsi, locked()->imsi.constData(), QRVL_IMSI_SIZE);
    return record("QRVL_DevSrv_GetImsiInfo");
}
