#include "DeviceClient.h"

#include "Guarded.h"

#include <QHash>
#include <QtTest>

#include <utility>

namespace {

struct Seen
{
    QStringList events;
    QHash<uint32_t, QString> ends;
};

Guarded<Seen> seen;
std::function<QString()> noteOf;

QVector<QRVL_Device> listed(long (*list)(QRVL_AvailableDeviceList*))
{
    QRVL_AvailableDeviceList modems;
    list(&modems);
    return {modems.devices, modems.devices + modems.count};
}

} // namespace

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
    return modems().value(0).id;
}

QString DeviceClient::value(const QString& key, uint32_t device)
{
    char16_t* buffer = nullptr;
    const long result = QRVL_DevSrv_GetStatusValue(device, utf16(key), &buffer);
    const QString text = buffer ? QString::fromUtf16(buffer) : QString::number(result);
    delete[] buffer;
    return text;
}

QString DeviceClient::values(const QStringList& keys)
{
    QStringList words;
    for (const QString& key : keys)
        words << value(key);
    return words.join(' ');
}

void DeviceClient::listen(const std::function<QString()>& note)
{
    noteOf = note;
    if (QRVL_DevSrv_RegisterDevMgrCallback(&record) != QRVL_OK)
        qFatal("The device service does not report events");
}

int DeviceClient::record(int type, void* data)
{
    const QString note = noteOf();
    auto access = seen.lock();
    access->events << QString::number(type) + ':' + note;
    if (type == QRVL_EVENT_DEV_REQUEST) {
        const auto* const end = static_cast<const QRVL_RequestEnd*>(data);
        access->ends.insert(end->request,
                            QString("%1 %2").arg(end->result).arg(QString::fromUtf16(end->text)).trimmed());
    }
    return 1;
}

QStringList DeviceClient::events()
{
    return seen.lock()->events;
}

QStringList DeviceClient::takeEvents()
{
    return std::exchange(seen.lock()->events, {});
}

QStringList DeviceClient::eventsUntil(const QString& last)
{
    const bool hasCome = QTest::qWaitFor([&] { return events().contains(last); }, Patience);
    return hasCome ? takeEvents() : takeEvents() << last + " is missing";
}

uint32_t DeviceClient::started(const Ask& ask)
{
    uint32_t number = 0;
    return ask(modemId(), &number) == QRVL_OK ? number : 0;
}

QString DeviceClient::endOf(uint32_t request)
{
    const auto end = [request] {
        return seen.lock()->ends.value(request, "no end");
    };
    return QTest::qWaitFor([&] { return end() != "no end"; }, Patience) ? end() : "no end";
}

QString DeviceClient::outcome(const Ask& ask)
{
    uint32_t number = 7;
    const long result = ask(modemId(), &number);
    return result == QRVL_OK ? endOf(number) : QString("not started %1 %2").arg(result).arg(number);
}
