#include "Message.h"

#include "support/DialString.h"

#include <tuple>

bool isNewer(const Message& left, const Message& right)
{
    return std::tie(left.time, left.order) > std::tie(right.time, right.order);
}

bool isNumber(const QString& address)
{
    return !dialString(address).isEmpty();
}

QString addressKey(const QString& address)
{
    const QString number = dialString(address);
    return number.isEmpty() ? address.simplified() : number;
}
