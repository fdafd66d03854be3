#include "common/CommonUtils.h"

#include "Change/Change.h"
#include "common/Log.h"

#include <array>
#include <cmath>
#include <cstring>
#include <limits>

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

/// A number from 0 to below 2^64 in hundredths, rounded as "%.2f" does: by the exact binary value, ties to
/// even.
struct Hundredths
{
    explicit Hundredths(double number)
    {
        static_assert(std::numeric_limits<double>::is_iec559, "taken apart by its bits");
        quint64 bits = 0;
        std::memcpy(&bits, &number, sizeof bits);
        constexpr quint64 leadingOne = quint64(1) << 52;
        const quint64 mantissa = (bits & (leadingOne - 1)) | leadingOne;
        const int shift = 1075 - static_cast<int>(bits >> 52); // the number is mantissa / 2^shift
        if (shift <= 0)
            whole = mantissa << -shift;
        else if (shift < 64)
            split(mantissa, shift);
    }

    quint64 whole = 0;
    quint64 part = 0;

private:
    void split(quint64 mantissa, int shift)
    {
        const quint64 one = quint64(1) << shift;
        const quint64 scaled = (mantissa & (one - 1)) * 100; // below 2^60
        const quint64 rest = scaled & (one - 1);
        whole = mantissa >> shift;
        part = scaled >> shift;
        if (rest > one / 2 || (rest == one / 2 && part % 2))
            ++part;
        whole += part / 100;
        part %= 100;
    }
};

/// Writes a text from its end to its beginning.
class BackwardWriter
{
public:
    void put(unsigned character) { *--m_begin = QChar(character); }

    void putDigit(quint64 digit) { put('0' + static_cast<unsigned>(digit)); }

    void putNumber(quint64 number)
    {
        do {
            putDigit(number % 10);
        } while (number /= 10);
    }

    QString textWith(const QString& end) const
    {
        const int length = static_cast<int>(m_buffer.data() + m_buffer.size() - m_begin);
        QString text;
        text.reserve(length + end.size());
        return text.append(m_begin, length).append(end);
    }

private:
    std::array<QChar, 32> m_buffer;
    QChar* m_begin = m_buffer.data() + m_buffer.size();
};

/// The text of "%.2f " and the unit, whatever the locale.
QString valueText(double number, const QString& unit)
{
    constexpr double limit = 18446744073709551616.0; // 2^64
    if (!(std::fabs(number) < limit))
        return QString::asprintf("%.2f ", number) + unit;

    const Hundredths hundredths(std::fabs(number));
    BackwardWriter writer;
    writer.put(' ');
    writer.putDigit(hundredths.part % 10);
    writer.putDigit(hundredths.part / 10);
    writer.put('.');
    writer.putNumber(hundredths.whole);
    if (std::signbit(number))
        writer.put('-');
    return writer.textWith(unit);
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
