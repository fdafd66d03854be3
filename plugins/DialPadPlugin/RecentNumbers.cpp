#include "RecentNumbers.h"

#include "common/CommonUtils.h"

#include <QRegularExpression>

namespace {

constexpr QLatin1String Section("calls");
constexpr QLatin1String Key("recent");
constexpr QLatin1Char Separator(' '); // dial strings contain none

/// Codes for changing or unblocking a PIN and for call barring, if they go on with a password: "**04*1234*...",
/// "*33*0000#". Without one, as in "*#33#", they only ask.
constexpr QLatin1String PasswordCode(R"(^[*#]{1,3}(0[345]\d?|33\d?|35\d?)\*)");
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
    if (QRegularExpression(PasswordCode).match(dialString).hasMatch())
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
