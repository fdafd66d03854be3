#include "common/CommonUtils.h"

#include "Change/Change.h"
#include "common/Log.h"

#include <QStringBuilder>

#include <array>
#include <charconv>

namespace {

QString unitText(const TagUnits& step, const QString& context)
{
    return step.key.isEmpty() ? step.name : Change::tr(step.key, context);
}

const TagUnits& chooseStep(const QVector<TagUnits>& units, quint64 value)
{
    const TagUnits* chosen = &units.first();
    for (const TagUnits& step : units) {
        if (step.threshold < value)
            chosen = &step;
    }
    return *chosen;
}

/// "%.2f " and the unit, independent of the locale.
QString valueText(double number, const QString& unit)
{
    // Values below 2^64 over whole divisors have at most 20 digits before the point.
    std::array<char, 32> digits{};
    char* const last = digits.data() + digits.size();
    const char* const end = std::to_chars(digits.data(), last, number, std::chars_format::fixed, 2).ptr;
    const QLatin1String numberText(digits.data(), static_cast<int>(end - digits.data()));
    return numberText % QLatin1Char(' ') % unit; // "%" allocates once
}

} // namespace

QString CommonUtils::SpeedUnitToString(QVector<TagUnits> units, QString context)
{
    return units.isEmpty() ? QString() : unitText(qAsConst(units).first(), context);
}

QString CommonUtils::SpeedFluxToString(QVector<TagUnits> units, unsigned long long value, QString context)
{
    LOG_DEBUG("%s: %s: %s: Entered", LOG_TIME, LOG_FILE, LOG_FUNCTION);
    if (units.isEmpty())
        return {};
    const TagUnits& step = chooseStep(units, value);
    const double number = static_cast<double>(value) / step.divisor;
    QString text = valueText(number, unitText(step, context));
    LOG_DEBUG("%s: %s: %s: Exit", LOG_TIME, LOG_FILE, LOG_FUNCTION);
    return text;
}
