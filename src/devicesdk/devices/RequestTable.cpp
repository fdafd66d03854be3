#include "devices/RequestTable.h"

#include "qrvl.h"

#include <algorithm>

namespace {

/// The first of the kinds that a modem cannot carry out at the same time: both ways to unlock, and to look for
/// networks while it registers in one.
Request::Kind groupOf(Request::Kind kind)
{
    if (kind == Request::EnterPuk)
        return Request::EnterPin;
    return kind == Request::Register ? Request::ScanNetworks : kind;
}

/// Messages may be sent and deleted in any number. Disconnecting ends a request to connect, which therefore cannot
/// begin until it is over.
bool excludes(Request::Kind underWay, Request::Kind added)
{
    const bool isFree = added == Request::SendMessage || added == Request::DeleteMessage;
    return (!isFree && groupOf(underWay) == groupOf(added)) ||
           (underWay == Request::Disconnect && added == Request::Connect);
}

} // namespace

long RequestTable::add(Request& request)
{
    int count = 0;
    for (const Entry& entry : m_entries) {
        if (entry.device != request.device)
            continue;
        ++count;
        if (excludes(entry.kind, request.kind))
            return QRVL_ERROR_BUSY;
    }
    if (count >= MostForOneDevice)
        return QRVL_ERROR_LIMIT;
    request.number = ++m_lastNumber;
    m_entries.push_back({request.number, request.device, request.kind});
    return QRVL_OK;
}

bool RequestTable::take(quint32 number, quint32& device)
{
    const auto found = std::find_if(m_entries.cbegin(), m_entries.cend(),
                                    [&](const Entry& entry) { return entry.number == number; });
    if (found == m_entries.cend())
        return false;
    device = found->device;
    m_entries.erase(found);
    return true;
}

QVector<quint32> RequestTable::withoutDevice(const std::function<bool(quint32)>& isThere) const
{
    QVector<quint32> numbers;
    for (const Entry& entry : m_entries) {
        if (!isThere(entry.device))
            numbers.append(entry.number);
    }
    return numbers;
}
