#include "devices/DeviceRecord.h"

#include <algorithm>
#include <cstring>

namespace {

template <int size>
void fillLocal(const QString& text, char (&buffer)[size])
{
    DeviceRecord::fillText(text, &DeviceRecord::inLocalCodePage, buffer, size);
}

void fillDevice(const Modem& modem, QRVL_Device& device)
{
    device.id = modem.id;
    fillLocal(modem.model, device.name);
    fillLocal(modem.imsi, device.imsi);
    fillLocal(modem.gid, device.gid);
    fillLocal(modem.customize, device.customizeName);
    fillLocal(modem.port, device.port);
}

} // namespace

void DeviceRecord::fillList(const Modems& modems, QRVL_AvailableDeviceList& list)
{
    list = {};
    list.count = uint32_t(std::min(modems.size(), QRVL_MAX_DEVICES));
    for (uint32_t i = 0; i < list.count; ++i)
        fillDevice(modems[int(i)], list.devices[i]);
}

QByteArray DeviceRecord::inUtf8(const QString& text)
{
    return text.toUtf8();
}

QByteArray DeviceRecord::inLocalCodePage(const QString& text)
{
    return text.toLocal8Bit();
}

void DeviceRecord::fillText(const QString& text, Encoder encode, char* buffer, int size)
{
    QString rest = text.left(size); // each character takes at least a byte
    while (encode(rest).size() >= size) {
        rest.chop(1);
        if (!rest.isEmpty() && rest.at(rest.size() - 1).isHighSurrogate())
            rest.chop(1);
    }
    const QByteArray bytes = encode(rest);
    std::memset(buffer, 0, std::size_t(size));
    std::memcpy(buffer, bytes.constData(), std::size_t(bytes.size()));
}
