#include "ScriptedDeviceService.h"

#include "TextBuffer.h"

#include <QHash>

#include <algorithm>
#include <mutex>
#include <set>
#include <thread>
#include <utility>

using Service = ScriptedDeviceService;

namespace {

using Address = QPair<QString, QString>;
enum CallbackList { Initialisation, Manager };

struct State
{
    QHash<Address, QString> settings[3];
    std::set<std::pair<CallbackList, QRVL_DevCallback>> callbacks;
    QStringList devices;
    QByteArray imsi;
    QByteArray customizeName;
    QHash<QString, long> results;
    QStringList calls;
};

/// The state, locked as long as this object lives.
class Locked
{
public:
    State* operator->() { return &state; }

private:
    static State state;
    static std::mutex mutex;
    std::lock_guard<std::mutex> m_lock{mutex};
};

State Locked::state;
std::mutex Locked::mutex;

/// Records a call and returns its result.
long record(const char* operation, const QString& arguments = {})
{
    Locked state;
    state->calls.append(QLatin1String(operation) + arguments);
    return state->results.value(QLatin1String(operation), QRVL_OK);
}

long read(const char* operation, Service::View view, const char16_t* section, const char16_t* key,
          char16_t** value)
{
    *value = nullptr;
    Locked state;
    const auto found = state->settings[view].constFind({textOf(section), textOf(key)});
    const bool isFound = found != state->settings[view].constEnd();
    const long result =
        state->results.value(QLatin1String(operation), isFound ? QRVL_OK : QRVL_ERROR_NOT_FOUND);
    if (result == QRVL_OK && isFound && !found->isNull())
        *value = newTextBuffer(*found);
    static char16_t notForTheCaller[] = u"error";
    if (result != QRVL_OK && isFound)
        *value = notForTheCaller; // freeing it would end the process
    return result;
}

long add(const char* operation, CallbackList list, QRVL_DevCallback callback)
{
    const long result = record(operation);
    if (result == QRVL_OK)
        Locked()->callbacks.emplace(list, callback);
    return result;
}

long remove(const char* operation, CallbackList list, QRVL_DevCallback callback)
{
    const long result = record(operation);
    const bool isRemoved = Locked()->callbacks.erase({list, callback}) > 0;
    return result == QRVL_OK && !isRemoved ? long(QRVL_ERROR_NOT_FOUND) : result;
}

} // namespace

// ---- What tests use

Service& Service::instance()
{
    static Service service;
    return service;
}

void Service::reset()
{
    *Locked().operator->() = {};
}

void Service::setSetting(const QString& section, const QString& key, const QString& value, View view)
{
    Locked()->settings[view].insert({section, key}, value);
}

QString Service::setting(const QString& section, const QString& key, View view) const
{
    return Locked()->settings[view].value({section, key});
}

void Service::setDevices(const QStringList& names)
{
    Locked()->devices = names;
}

void Service::setCustomizeName(const QByteArray& name)
{
    Locked()->customizeName = name;
}

void Service::setImsi(const QByteArray& imsi)
{
    Locked()->imsi = imsi;
}

void Service::setResult(const QString& operation, long result)
{
    Locked()->results.insert(operation, result);
}

void Service::fire(std::initializer_list<int> events)
{
    const auto registrations = Locked()->callbacks;
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

int Service::registrations() const
{
    return int(Locked()->callbacks.size());
}

QStringList Service::calls() const
{
    return Locked()->calls;
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
    const Address address(textOf(section), textOf(key));
    const QString text = textOf(value);
    const long result =
        record("QRVL_SetSettings", QStringLiteral("(%1, %2, %3)").arg(address.first, address.second, text));
    for (const Service::View view : {Service::User, Service::Merged}) {
        if (result == QRVL_OK)
            Locked()->settings[view].insert(address, text);
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
    const QStringList names = Locked()->devices;
    list->count = uint32_t(names.size());
    for (int i = 0; i < std::min(names.size(), QRVL_MAX_DEVICES); ++i)
        qstrncpy(list->devices[i].name, names.at(i).toLocal8Bit().constData(), QRVL_DEVICE_NAME_SIZE);
    return QRVL_OK;
}

long QRVL_DevSrv_GetCustomizeName(char* name)
{
    qstrncpy(name, Locked()->customizeName.constData(), QRVL_CUSTOMIZE_NAME_SIZE);
    return record("QRVL_DevSrv_GetCustomizeName");
}

long QRVL_DevSrv_GetImsiInfo(char* imsi)
{
    qstrncpy(imsi, Locked()->imsi.constData(), QRVL_IMSI_SIZE);
    return record("QRVL_DevSrv_GetImsiInfo");
}
