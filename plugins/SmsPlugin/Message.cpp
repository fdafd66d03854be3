#include "Message.h"

#include <algorithm>
#include <tuple>

namespace {

bool isSeparator(QChar sign)
{
    return sign.isSpace() || QLatin1String("-()./").contains(sign);
}

QString withoutSeparators(QString address)
{
    address.truncate(int(std::remove_if(address.begin(), address.end(), isSeparator) - address.begin()));
    return address;
}

bool isDialKey(QChar sign)
{
    return (sign >= QLatin1Char('0') && sign <= QLatin1Char('9')) || QLatin1String("*#").contains(sign);
}

} // namespace

bool isNewer(const Message& left, const Message& right)
{
    return std::tie(left.time, left.order) > std::tie(right.time, right.order);
}

bool isNumber(const QString& address)
{
    const QString plain = withoutSeparators(address);
    const auto first = plain.begin() + (plain.startsWith(QLatin1Char('+')) ? 1 : 0);
    return first != plain.end() && std::all_of(first, plain.end(), isDialKey);
}

QString addressKey(const QString& address)
{
    return isNumber(address) ? withoutSeparators(address) : address.simplified();
}
