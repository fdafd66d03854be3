#include "DataLimit.h"

#include "support/BoolSetting.h"

#include <algorithm>
#include <limits>

namespace {

constexpr QLatin1String Section("data");
constexpr QLatin1String UnitKey("unit");
constexpr QLatin1String UnitNames[] = {QLatin1String("MB"), QLatin1String("GB")};
constexpr BoolSetting HasLimit{Section, QLatin1String("limit")};

struct Number
{
    QLatin1String key;
    int DataLimit::*value;
    int least;
    int most;
};

constexpr Number Numbers[] = {
    {QLatin1String("amount"), &DataLimit::amount, 1, DataLimit::MostAmount},
    {QLatin1String("warn-at"), &DataLimit::warnAt, DataLimit::LeastShare, DataLimit::MostShare},
    {QLatin1String("first-day"), &DataLimit::firstDay, 1, 31},
};

} // namespace

DataLimit DataLimit::load()
{
    DataLimit limit;
    limit.isOn = HasLimit.isSet();
    limit.unit = CommonUtils::GetSettings(Section, UnitKey) == UnitNames[Megabytes] ? Megabytes : Gigabytes;
    for (const Number& number : Numbers) {
        const int value = CommonUtils::GetSettings(Section, number.key).toInt();
        if (value >= number.least && value <= number.most)
            limit.*number.value = value;
    }
    return limit;
}

void DataLimit::save() const
{
    HasLimit.set(isOn);
    CommonUtils::SetSettings(Section, UnitKey, UnitNames[unit]);
    for (const Number& number : Numbers)
        CommonUtils::SetSettings(Section, number.key, QString::number(this->*number.value));
}

quint64 DataLimit::bytes(int base) const
{
    const quint64 megabyte = quint64(base) * quint64(base);
    return isOn ? quint64(amount) * (unit == Gigabytes ? megabyte * quint64(base) : megabyte) : 0;
}

int shareOf(quint64 used, quint64 limit)
{
    if (limit == 0)
        return 0;
    const double share = 100.0 * double(used) / double(limit);
    return int(std::min(share, double(std::numeric_limits<int>::max())));
}

LimitState limitState(quint64 used, quint64 limit, int warnAt)
{
    if (limit == 0)
        return LimitState::Below;
    if (used >= limit)
        return LimitState::Reached;
    return shareOf(used, limit) >= warnAt ? LimitState::Near : LimitState::Below;
}
