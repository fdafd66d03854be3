// The device operations of the C interface, see qrvl.h.

#include "qrvl.h"

#include "Service.h"
#include "TextBuffer.h"
#include "devices/DeviceRecord.h"
#include "devices/DeviceService.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace {

long add(CallbackRegistry::List list, QRVL_DevCallback callback)
{
    if (!callback)
        return QRVL_ERROR_ARGUMENT;
    return Service::devices().callbacks().add(list, callback) ? QRVL_OK : QRVL_ERROR_LIMIT;
}

long remove(CallbackRegistry::List list, QRVL_DevCallback callback)
{
    if (!callback)
        return QRVL_ERROR_ARGUMENT;
    return Service::devices().callbacks().remove(list, callback) ? QRVL_OK : QRVL_ERROR_NOT_FOUND;
}

} // namespace

long QRVL_DevSrv_RegisterDevInitEventCallback(QRVL_DevCallback callback)
{
    return add(CallbackRegistry::Initialisation, callback);
}

long QRVL_DevSrv_RegisterDevMgrCallback(QRVL_DevCallback callback)
{
    return add(CallbackRegistry::Manager, callback);
}

long QRVL_DevSrv_UnRegisterDevInitEventCallback(QRVL_DevCallback callback)
{
    return remove(CallbackRegistry::Initialisation, callback);
}

long QRVL_DevSrv_UnRegisterDevMgrCallback(QRVL_DevCallback callback)
{
    return remove(CallbackRegistry::Manager, callback);
}

long QRVL_DevSrv_StartDetect(void)
{
    Service::devices().startDetect();
    return QRVL_OK;
}

long QRVL_DevSrv_GetAvailableDeviceList(QRVL_AvailableDeviceList* list)
{
    if (!list)
        return QRVL_ERROR_ARGUMENT;
    DeviceRecord::fillList(Service::devices().available(), *list);
    return QRVL_OK;
}

long QRVL_DevSrv_GetCustomizeName(char* name)
{
    if (!name)
        return QRVL_ERROR_ARGUMENT;
    const Modems modems = Service::devices().available();
    const QString text = modems.isEmpty() ? QString() : modems.first().customize;
    DeviceRecord::fillText(text, &DeviceRecord::inUtf8, name, QRVL_CUSTOMIZE_NAME_SIZE);
    return modems.isEmpty() ? QRVL_ERROR_NO_DEVICE : QRVL_OK;
}

long QRVL_DevSrv_GetImsiInfo(char* imsi)
{
    if (!imsi)
        return QRVL_ERROR_ARGUMENT;
    const Modems modems = Service::devices().available();
    const QString text = modems.isEmpty() ? QString() : modems.first().imsi;
    DeviceRecord::fillText(text, &DeviceRecord::inUtf8, imsi, QRVL_IMSI_SIZE);
    return text.isEmpty() ? QRVL_ERROR_NO_DEVICE : QRVL_OK;
}

namespace {

/// Waits as long as the modem takes for its answer.
long readValue(const Modem& modem, const QString& key, char16_t** value)
{
    const auto status = modem.status.constFind(key);
    if (status != modem.status.cend()) {
        *value = newTextBuffer(*status);
        return QRVL_OK;
    }
    const auto message = modem.messages.constFind(key);
    if (message == modem.messages.cend())
        return QRVL_ERROR_NOT_FOUND;
    std::this_thread::sleep_for(std::chrono::milliseconds(modem.answerTime));
    *value = newTextBuffer(*message);
    return QRVL_OK;
}

} // namespace

long QRVL_DevSrv_GetStatusValue(uint32_t device, const char16_t* key, char16_t** value)
{
    if (!value)
        return QRVL_ERROR_ARGUMENT;
    *value = nullptr;
    if (!key)
        return QRVL_ERROR_ARGUMENT;
    const Modems modems = Service::devices().available();
    const auto modem = std::find_if(modems.begin(), modems.end(),
                                    [device](const Modem& candidate) { return candidate.id == device; });
    if (modem == modems.end())
        return QRVL_ERROR_NO_DEVICE;
    return readValue(*modem, textOf(key), value);
}
