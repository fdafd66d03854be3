#include "DeviceClient.h"

#include <QHash>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <utility>

namespace {

std::mutex seenMutex;
std::condition_variable seenMore;
QHash<uint32_t, QString> seenEnds;
QVector<int> seenEvents;

int record(int type, void* data)
{
    const std::lock_guard lock(seenMutex);
    seenEvents << type;
    if (type == QRVL_EVENT_DEV_REQUEST) {
        const auto* const end = static_cast<const QRVL_RequestEnd*>(data);
        seenEnds.insert(end->request,
                        QString("%1 %2").arg(end->result).arg(QString::fromUtf16(end->text)).trimmed());
    }
    seenMore.notify_all();
    return 1;
}

QVector<QRVL_Device> listed(long (*list)(QRVL_AvailableDeviceList*))
{
    QRVL_AvailableDeviceList modems;
    list(&modems);
    return {modems.devices, modems.devices + modems.count};
}

} // namespace

void DeviceClient::listen()
{
    if (QRVL_DevSrv_RegisterDevMgrCallback(&record) != QRVL_OK)
        qFatal("The device service does not report events");
}

QVector<int> DeviceClient::takeEvents()
{
    const std::lock_guard lock(seenMutex);
    return std::exchange(seenEvents, {});
}

QVector<int> DeviceClient::nextEvents(int count)
{
    std::unique_lock lock(seenMutex);
    seenMore.wait_for(lock, std::chrono::milliseconds(Patience),
                      [count] { return seenEvents.size() >= count; });
    const QVector<int> events = seenEvents.mid(0, count);
    seenEvents.remove(0, events.size());
    return events;
}

QVector<QRVL_Device> DeviceClient::modems()
{
    return listed(&QRVL_DevSrv_GetAvailableDeviceList);
}

QVector<QRVL_Device> DeviceClient::unusableModems()
{
    return listed(&QRVL_DevSrv_GetUnusableDeviceList);
}

uint32_t DeviceClient::modemId()
{
    const QVector<QRVL_Device> devices = modems();
    return devices.isEmpty() ? 0 : devices.first().id;
}

QString DeviceClient::value(const QString& key, uint32_t device)
{
    char16_t* buffer = nullptr;
    const long result =
        QRVL_DevSrv_GetStatusValue(device, reinterpret_cast<const char16_t*>(key.utf16()), &buffer);
    const QString text = buffer ? QString::fromUtf16(buffer) : QString::number(result);
    delete[] buffer;
    return text;
}

QString DeviceClient::values(const QStringList& keys)
{
    QStringList words;
    for (const QString& key : keys)
        words << value(key, modemId());
    return words.join(' ');
}

QString DeviceClient::endOf(uint32_t request)
{
    std::unique_lock lock(seenMutex);
    seenMore.wait_for(lock, std::chrono::milliseconds(Patience), [&] { return seenEnds.contains(request); });
    return seenEnds.value(request, "no end");
}

QString DeviceClient::outcome(const Ask& ask)
{
    uint32_t number = 0;
    const long result = ask(modemId(), &number);
    return result == QRVL_OK ? endOf(number) : QString("not started %1").arg(result);
}
