#include "RecentNumbers.h"

#include "common/CommonUtils.h"

namespace {

constexpr QLatin1String Section("calls");
constexpr QLatin1String Key("recent");
constexpr QLatin1Char Separator(' '); // dial strings contain none
constexpr QLatin1String PasswordCode("**0");
constexpr int Most = 10;

void store(const QStringList& numbers)
{
    CommonUtils::SetSettings(Section, Key, numbers.join(Separator));
}

} // namespace

QStringList RecentNumbers::load()
{
    return CommonUtils::GetSettings(Section, Key).split(Separator, Qt::SkipEmptyParts).mid(0, Most);
}

void RecentNumbers::add(const QString& dialString)
{
    if (dialString.startsWith(PasswordCode))
        return;
    QStringList numbers = load();
    numbers.removeAll(dialString);
    numbers.prepend(dialString);
    store(numbers.mid(0, Most));
}

void RecentNumbers::remove(const QString& dialString)
{
    QStringList numbers = load();
    numbers.removeAll(dialString);
    store(numbers);
}
