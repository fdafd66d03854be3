#include "support/Units.h"

#include "common/CommonUtils.h"
#include "common/StandardConfigParse.h"
#include "support/Numbers.h"
#include "support/Text.h"

namespace {

constexpr int UsualBase = 1024;

struct Step
{
    const char* speed; ///< identifiers of the units' strings
    const char* volume;
};

constexpr Step Steps[] = {
    {"IDS_UNIT_B_S", "IDS_UNIT_B"},
    {"IDS_UNIT_KB_S", "IDS_UNIT_KB"},
    {"IDS_UNIT_MB_S", "IDS_UNIT_MB"},
    {"IDS_UNIT_GB_S", "IDS_UNIT_GB"},
};

QVector<TagUnits> ladder(const char* Step::*unit, int base)
{
    QVector<TagUnits> units;
    quint64 divisor = 1; // exceeds an int only after the last step
    for (const Step& step : Steps) {
        const QString key = QString::fromLatin1(step.*unit);
        units.append({key, int(divisor), units.isEmpty() ? 0 : divisor, key});
        divisor *= quint64(base);
    }
    return units;
}

/// The factor between two units for the operator: 1024 or 1000.
int readBase()
{
    const QString base = QStringLiteral("base");
    const QString operatorKey = QStringLiteral("operator");
    StandardConfigParse file(QStringLiteral("/plugins/StatusBarMgrPlugin/Units.xml"));
    const QString operatorName = CommonUtils::GetSettings(QStringLiteral("customize"), operatorKey);
    const bool isForOperator =
        !operatorName.isEmpty() && file.GetConditionByName(operatorKey) == operatorName;
    const QString value = isForOperator ? file.GetResultByName(base) : file.GetCustomInfoByName(base);
    return value == QLatin1String("1000") ? 1000 : UsualBase;
}

/// The core writes numbers alike in all languages, as "1.40 MB".
QString inLanguage(const QString& amount, char format, int precision)
{
    const int space = amount.indexOf(QLatin1Char(' '));
    return languageLocale().toString(amount.left(space).toDouble(), format, precision) + amount.mid(space);
}

QString longAmount(const QVector<TagUnits>& units, quint64 value)
{
    return inLanguage(CommonUtils::SpeedFluxToString(units, value, SharedTexts), 'f', 2);
}

/// A full unit is one of it; the core writes it as 1024 of the smaller one.
QString shortAmount(const QVector<TagUnits>& units, quint64 value, int base)
{
    const bool isFull = value > 0 && value % quint64(base) == 0;
    return inLanguage(CommonUtils::SpeedFluxToString(units, isFull ? value + 1 : value, SharedTexts), 'g', 4);
}

} // namespace

Units::Units()
    : m_base(readBase())
    , m_speeds(ladder(&Step::speed, m_base))
    , m_volumes(ladder(&Step::volume, m_base))
{
}

QString Units::speed(const QString& bytesPerSecond) const
{
    return bytesPerSecond.isEmpty() ? QString(QChar(0x2013)) + QLatin1Char(' ') +
                                          CommonUtils::SpeedUnitToString(m_speeds, SharedTexts)
                                    : longAmount(m_speeds, bytesPerSecond.toULongLong());
}

QString Units::volume(quint64 bytes) const
{
    return longAmount(m_volumes, bytes);
}

QString Units::shortSpeed(quint64 bytesPerSecond) const
{
    return shortAmount(m_speeds, bytesPerSecond, m_base);
}

QString Units::shortVolume(quint64 bytes) const
{
    return shortAmount(m_volumes, bytes, m_base);
}
