#pragma once

#include "devices/Request.h"

#include <QVector>

#include <functional>
#include <vector>

/// The requests that are under way. Not thread-safe.
class RequestTable
{
public:
    static constexpr int MostForOneDevice = 64;

    /// Gives the request a number. Returns QRVL_OK, or a result of the C interface if it cannot begin now.
    long add(Request& request);

    /// Removes a request. Returns false if there is none with that number.
    bool take(quint32 number, quint32& device);

    /// The numbers of the requests whose modem is not there any more.
    QVector<quint32> withoutDevice(const std::function<bool(quint32)>& isThere) const;

private:
    struct Entry
    {
        quint32 number;
        quint32 device;
        Request::Kind kind;
    };
    std::vector<Entry> m_entries;
    quint32 m_lastNumber = 0;
};
