#include "ScriptedDeviceService.h"

#include <QHash>
#include <QPair>

#include <algorithm>
#include <cstring>
#include <mutex>
#include <set>
#include <thread>

using Service = ScriptedDeviceService;

namespace {

using Address = QPair<QString, QString>;
using Callbacks = std::set<QRVL_DevCallback>;

struct State
{
    QHash<Address, QString> settings[3];
    Callbacks callbacks[2];
    QStringList devices;
    QByteArray imsi;
    QHash<QString, long> results;
    QStringList calls;
};

std::mutex mutex; // guards the state
State state;

template <typename Action>
auto locked(Action action)
{
    const std::lock_guard lock(mutex);
    return action();
}

/// Notes a call and returns what it answers.
long note(const char* operation, const QString& arguments = {})
{
    return locked([&] {
        state.calls.append(QLatin1String(operation) + arguments);
        return state.results.value(QLatin1String(operation), QRVL_OK);
    });
}

Address addressOf(const char16_t* section, const char16_t* key)
{
    return {QString::fromUtf16(section), QString::fromUtf16(key)};
}

long read(const char* operation, Service::View view, const Address& address, char16_t** value)
{
    *value = nullptr;
    const std::lock_guard lock(mutex);
    const auto found = state.settings[view].constFind(address);
    const bool isFound = found != state.settings[view].constEnd();
    const long result = state.results.value(QLatin1String(operation), QRVL_OK);
    if (result == QRVL_OK && !isFound)
        return QRVL_ERROR_NOT_FOUND;
    static char16_t notForTheCaller[] = u"error";
    if (result != QRVL_OK)
        *value = notForTheCaller; // freeing it would end the process
    if (result != QRVL_OK || found->isNull())
        return result;
    const std::size_t size = std::size_t(found->size()) + 1;
    *value = new char16_t[size];
    std::memcpy(*value, found->utf16(), size * sizeof(char16_t));
    return QRVL_OK;
}

long addCallback(const char* operation, Callbacks& list, QRVL_DevCallback callback)
{
    const long result = note(operation);
    if (result == QRVL_OK)
        locked([&] { list.insert(callback); });
    return result;
}

long removeCallback(const char* operation, Callbacks& list, QRVL_DevCallback callback)
{
    const long result = note(operation);
    const bool isRemoved = locked([&] { return list.erase(callback) > 0; });
    return result == QRVL_OK && !isRemoved ? long(QRVL_ERROR_NOT_FOUND) : result;
}

} // namespace

// ---- What the tests say

Service& Service::instance()
{
    static Service service;
    return service;
}

void Service::reset()
{
    locked([] { state = {}; });
}

void Service::setSetting(const QString& section, const QString& key, const QString& value, View view)
{
    locked([&] { state.settings[view].insert({section, key}, value); });
}

QString Service::setting(const QString& section, const QString& key, View view) const
{
    return locked([&] { return state.settings[view].value({section, key}); });
}

void Service::setDevices(const QStringList& names)
{
    locked([&] { state.devices = names; });
}

void Service::setImsi(const QByteArray& imsi)
{
    locked([&] { state.imsi = imsi; });
}

void Service::setResult(const QString& operation, long result)
{
    locked([&] { state.results.insert(operation, result); });
}

void Service::fire(std::initializer_list<int> events)
{
    Callbacks callbacks = locked([] { return state.callbacks[0]; });
    callbacks.merge(locked([] { return state.callbacks[1]; }));
    std::thread service([&] {
        for (const int event : events) {
            for (QRVL_DevCallback callback : callbacks)
                callback(event, nullptr);
        }
    });
    service.join();
}

int Service::registrations() const
{
    return locked([] { return int(state.callbacks[0].size() + state.callbacks[1].size()); });
}

QStringList Service::calls() const
{
    return locked([] { return state.calls; });
}

// ---- The C interface

long QRVL_GetSettings(const char16_t* section, const char16_t* key, char16_t** value)
{
    return read("QRVL_GetSettings", Service::Merged, addressOf(section, key), value);
}

long QRVL_GetUserSettings(const char16_t* section, const char16_t* key, char16_t** value)
{
    return read("QRVL_GetUserSettings", Service::User, addressOf(section, key), value);
}

long QRVL_GetIniSettings(const char16_t* section, const char16_t* key, char16_t** value)
{
    return read("QRVL_GetIniSettings", Service::Ini, addressOf(section, key), value);
}

long QRVL_SetSettings(const char16_t* section, const char16_t* key, const char16_t* value)
{
    const Address address = addressOf(section, key);
    const QString text = QString::fromUtf16(value);
    const long result =
        note("QRVL_SetSettings", QStringLiteral("(%1, %2, %3)").arg(address.first, address.second, text));
    for (const Service::View view : {Service::User, Service::Merged}) {
        if (result == QRVL_OK)
            Service::instance().setSetting(address.first, address.second, text, view);
    }
    return result;
}

long QRVL_DevSrv_RegisterDevInitEventCallback(QRVL_DevCallback callback)
{
    return addCallback("QRVL_DevSrv_RegisterDevInitEventCallback", state.callbacks[0], callback);
}

long QRVL_DevSrv_RegisterDevMgrCallback(QRVL_DevCallback callback)
{
    return addCallback("QRVL_DevSrv_RegisterDevMgrCallback", state.callbacks[1], callback);
}

long QRVL_DevSrv_UnRegisterDevInitEventCallback(QRVL_DevCallback callback)
{
    return removeCallback("QRVL_DevSrv_UnRegisterDevInitEventCallback", state.callbacks[0], callback);
}

long QRVL_DevSrv_UnRegisterDevMgrCallback(QRVL_DevCallback callback)
{
    return removeCallback("QRVL_DevSrv_UnRegisterDevMgrCallback", state.callbacks[1], callback);
}

long QRVL_DevSrv_StartDetect()
{
    return note("QRVL_DevSrv_StartDetect");
}

long QRVL_DevSrv_GetAvailableDeviceList(QRVL_AvailableDeviceList* list)
{
    const long result = note("QRVL_DevSrv_GetAvailableDeviceList");
    if (result != QRVL_OK)
        return result;
    const QStringList names = locked([] { return state.devices; });
    list->count = uint32_t(names.size());
    for (int i = 0; i < std::min(names.size(), QRVL_MAX_DEVICES); ++i)
        qstrncpy(list->devices[i].name, names.at(i).toLocal8Bit().constData(), QRVL_DEVICE_NAME_SIZE);
    return QRVL_OK;
}

long QRVL_DevSrv_GetCustomizeName(char* name)
{
    *name = 0;
    return note("QRVL_DevSrv_GetCustomizeName");
}

long QRVL_DevSrv_GetImsiInfo(char* imsi)
{
    qstrncpy(imsi, locked([] { return state.imsi; }).constData(), QRVL_IMSI_SIZE);
    return note("QRVL_DevSrv_GetImsiInfo");
}
