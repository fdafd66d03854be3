#include "support/Modems.h"

#include "support/Requests.h"

#include <qrvl.h>

#include <algorithm>
#include <memory>
#include <tuple>

namespace {

Modem modemFromRecord(const QRVL_Device& device)
{
    Modem modem;
    modem.id = device.id;
    modem.name = QString::fromLocal8Bit(device.name);
    modem.imsi = QString::fromLocal8Bit(device.imsi);
    modem.gid = QString::fromLocal8Bit(device.gid);
    modem.customizeName = QString::fromLocal8Bit(device.customizeName);
    modem.port = QString::fromLocal8Bit(device.port);
    return modem;
}

using ReadList = long (*)(QRVL_AvailableDeviceList*);

Modems readModems(ReadList read)
{
    QRVL_AvailableDeviceList list = {};
    Modems modems;
    if (read(&list) != QRVL_OK)
        return modems;
    const auto end = list.devices + std::min<uint32_t>(list.count, QRVL_MAX_DEVICES);
    std::transform(list.devices, end, std::back_inserter(modems), modemFromRecord);
    return modems;
}

auto fields(const Modem& modem)
{
    return std::tie(modem.id, modem.name, modem.imsi, modem.gid, modem.customizeName, modem.port);
}

} // namespace

QString shownName(const Modem& modem)
{
    return modem.port.isEmpty() ? modem.name : modem.name + QStringLiteral(" \u00b7 ") + modem.port;
}

bool operator==(const Modem& left, const Modem& right)
{
    return fields(left) == fields(right);
}

Modems attachedModems()
{
    return readModems(QRVL_DevSrv_GetAvailableDeviceList);
}

Modems unusableModems()
{
    return readModems(QRVL_DevSrv_GetUnusableDeviceList);
}

bool isAttached(quint32 id)
{
    const Modems modems = attachedModems();
    return std::any_of(modems.begin(), modems.end(), [id](const Modem& modem) { return modem.id == id; });
}

QString unusableState()
{
    const Modems unusable = attachedModems().isEmpty() ? unusableModems() : Modems();
    return unusable.isEmpty() ? QString() : modemValue(unusable.first().id, QStringLiteral("state"));
}

QString modemValue(quint32 id, const QString& key)
{
    char16_t* buffer = nullptr;
    const long result = QRVL_DevSrv_GetStatusValue(id, utf16(key), &buffer);
    const std::unique_ptr<char16_t[]> value(buffer);
    return result == QRVL_OK && value ? QStringView(value.get()).toString() : QString();
}

QString modemValue(const Modem& modem, const char* key)
{
    return modemValue(modem.id, QString::fromLatin1(key));
}

QString serviceValue(const QString& key)
{
    return modemValue(QRVL_SERVICE, key);
}

bool hasNetwork(quint32 id)
{
    return !modemValue(id, QStringLiteral("network")).isEmpty();
}

bool canMakeCalls(quint32 id)
{
    return serviceValue(QStringLiteral("backend")) == QLatin1String("simulator") &&
           modemValue(id, QStringLiteral("calls")) != QLatin1String("none");
}
