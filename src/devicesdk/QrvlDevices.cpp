// The device operations of the C interface, see qrvl.h.

#include "qrvl.h"

#include "Service.h"
#include "TextBuffer.h"
#include "devices/DeviceRecord.h"
#include "devices/DeviceService.h"

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

long QRVL_DevSrv_GetUnusableDeviceList(QRVL_AvailableDeviceList* list)
{
    if (!list)
        return QRVL_ERROR_ARGUMENT;
    DeviceRecord::fillList(Service::devices().unusable(), *list);
    return QRVL_OK;
}

long QRVL_DevSrv_GetCustomizeName(char* name)
{
    if (!name)
        return QRVL_ERROR_ARGUMENT;
    const Modems modems = Service::devices().available();
    const QString own = modems.isEmpty() ? QString() : modems.first().customize;
    const QString text = own.isEmpty() ? QStringLiteral(QRVL_CUSTOMIZE_NAME_COMMON) : own;
    DeviceRecord::fillText(text, &DeviceRecord::inUtf8, name, QRVL_CUSTOMIZE_NAME_SIZE);
    return QRVL_OK;
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

long QRVL_DevSrv_GetStatusValue(uint32_t device, const char16_t* key, char16_t** value)
{
    if (!value)
        return QRVL_ERROR_ARGUMENT;
    *value = nullptr;
    if (!key)
        return QRVL_ERROR_ARGUMENT;
    QString text;
    const long result = Service::devices().read(device, textOf(key), text);
    if (result == QRVL_OK)
        *value = newTextBuffer(text);
    return result;
}
