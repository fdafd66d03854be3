#include "ScriptedDeviceService.h"

#include <algorithm>
#include <cstring>
#include <set>
#include <thread>

ScriptedDeviceService& ScriptedDeviceService::instance()
{
    static ScriptedDeviceService service;
    return service;
}

void ScriptedDeviceService::reset()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    for (auto& view : m_settings)
        view.clear();
    for (auto& list : m_callbacks)
        list.clear();
    m_devices.clear();
    m_imsi.clear();
    m_results.clear();
    m_calls.clear();
}

void ScriptedDeviceService::setSetting(const QString& section, const QString& key, const QString& value,
                                       View view)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_settings[view].insert({section, key}, value);
}

QString ScriptedDeviceService::setting(const QString& section, const QString& key, View view) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_settings[view].value({section, key});
}

void ScriptedDeviceService::setDevices(const QStringList& names)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_devices = names;
}

void ScriptedDeviceService::setImsi(const QByteArray& imsi)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_imsi = imsi;
}

void ScriptedDeviceService::setResult(const QString& operation, long result)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_results.insert(operation, result);
}

void ScriptedDeviceService::fire(std::initializer_list<int> events)
{
    std::set<QRVL_DevCallback> callbacks;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        for (const auto& list : m_callbacks)
            callbacks.insert(list.begin(), list.end());
    }

    std::thread service([&] {
        for (const int event : events) {
            for (QRVL_DevCallback callback : callbacks)
                callback(event, nullptr);
        }
    });
    service.join();
}

int ScriptedDeviceService::registrations() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return int(m_callbacks[0].size() + m_callbacks[1].size());
}

QStringList ScriptedDeviceService::calls() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_calls;
}

long ScriptedDeviceService::read(const char* operation, View view, const char16_t* section,
                                 const char16_t* key, char16_t** value) const
{
    *value = nullptr;
    const std::lock_guard<std::mutex> lock(m_mutex);
    const long result = m_results.value(QLatin1String(operation), QRVL_OK);
    if (result != QRVL_OK)
        return result;
    const Address address(QString::fromUtf16(section), QString::fromUtf16(key));
    const auto found = m_settings[view].constFind(address);
    if (found == m_settings[view].constEnd())
        return QRVL_ERROR_NOT_FOUND;
    if (found->isNull())
        return QRVL_OK;
    const std::size_t size = std::size_t(found->size()) + 1;
    *value = new char16_t[size];
    std::memcpy(*value, found->utf16(), size * sizeof(char16_t));
    return QRVL_OK;
}

long ScriptedDeviceService::write(const char16_t* section, const char16_t* key, const char16_t* value)
{
    const Address address(QString::fromUtf16(section), QString::fromUtf16(key));
    const QString text = QString::fromUtf16(value);
    const QString call =
        QStringLiteral("QRVL_SetSettings(%1, %2, %3)").arg(address.first, address.second, text);

    const std::lock_guard<std::mutex> lock(m_mutex);
    m_calls.append(call);
    const long result = m_results.value(QStringLiteral("QRVL_SetSettings"), QRVL_OK);
    if (result == QRVL_OK) {
        m_settings[User].insert(address, text);
        m_settings[Merged].insert(address, text);
    }
    return result;
}

long ScriptedDeviceService::addCallback(const char* operation, int list, QRVL_DevCallback callback)
{
    const long result = note(operation);
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (result == QRVL_OK)
        m_callbacks[list].insert(callback);
    return result;
}

long ScriptedDeviceService::removeCallback(const char* operation, int list, QRVL_DevCallback callback)
{
    const long result = note(operation);
    const std::lock_guard<std::mutex> lock(m_mutex);
    const bool isRemoved = m_callbacks[list].erase(callback) > 0;
    return result == QRVL_OK && !isRemoved ? long(QRVL_ERROR_NOT_FOUND) : result;
}

long ScriptedDeviceService::devices(QRVL_AvailableDeviceList* list)
{
    const long result = note("QRVL_DevSrv_GetAvailableDeviceList");
    if (result != QRVL_OK)
        return result;
    const std::lock_guard<std::mutex> lock(m_mutex);
    list->count = uint32_t(m_devices.size());
    for (int i = 0; i < std::min(m_devices.size(), QRVL_MAX_DEVICES); ++i)
        qstrncpy(list->devices[i].name, m_devices.at(i).toLocal8Bit().constData(), QRVL_DEVICE_NAME_SIZE);
    return QRVL_OK;
}

long ScriptedDeviceService::imsi(char* buffer)
{
    const long result = note("QRVL_DevSrv_GetImsiInfo");
    const std::lock_guard<std::mutex> lock(m_mutex);
    qstrncpy(buffer, m_imsi.constData(), QRVL_IMSI_SIZE);
    return result;
}

long ScriptedDeviceService::note(const char* operation)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_calls.append(QLatin1String(operation));
    return m_results.value(QLatin1String(operation), QRVL_OK);
}

// ---- The C interface
// --------------------------------------------------------------------------------------------

static ScriptedDeviceService& service()
{
    return ScriptedDeviceService::instance();
}

long QRVL_GetSettings(const char16_t* section, const char16_t* key, char16_t** value)
{
    return service().read("QRVL_GetSettings", ScriptedDeviceService::Merged, section, key, value);
}

long QRVL_GetUserSettings(const char16_t* section, const char16_t* key, char16_t** value)
{
    return service().read("QRVL_GetUserSettings", ScriptedDeviceService::User, section, key, value);
}

long QRVL_GetIniSettings(const char16_t* section, const char16_t* key, char16_t** value)
{
    return service().read("QRVL_GetIniSettings", ScriptedDeviceService::Ini, section, key, value);
}

long QRVL_SetSettings(const char16_t* section, const char16_t* key, const char16_t* value)
{
    return service().write(section, key, value);
}

long QRVL_DevSrv_RegisterDevInitEventCallback(QRVL_DevCallback callback)
{
    return service().addCallback("QRVL_DevSrv_RegisterDevInitEventCallback", 0, callback);
}

long QRVL_DevSrv_RegisterDevMgrCallback(QRVL_DevCallback callback)
{
    return service().addCallback("QRVL_DevSrv_RegisterDevMgrCallback", 1, callback);
}

long QRVL_DevSrv_UnRegisterDevInitEventCallback(QRVL_DevCallback callback)
{
    return service().removeCallback("QRVL_DevSrv_UnRegisterDevInitEventCallback", 0, callback);
}

long QRVL_DevSrv_UnRegisterDevMgrCallback(QRVL_DevCallback callback)
{
    return service().removeCallback("QRVL_DevSrv_UnRegisterDevMgrCallback", 1, callback);
}

long QRVL_DevSrv_StartDetect()
{
    return service().note("QRVL_DevSrv_StartDetect");
}

long QRVL_DevSrv_GetAvailableDeviceList(QRVL_AvailableDeviceList* list)
{
    return service().devices(list);
}

long QRVL_DevSrv_GetCustomizeName(char* name)
{
    *name = 0;
    return service().note("QRVL_DevSrv_GetCustomizeName");
}

long QRVL_DevSrv_GetImsiInfo(char* imsi)
{
    return service().imsi(imsi);
}
