#include "Shown.h"

#include "support/Numbers.h"
#include "support/Text.h"

#include <QDateTime>

namespace {

struct State
{
    QLatin1String name;
    const char* id;
};

constexpr State States[] = {
    {QLatin1String("sending"), "IDS_SMS_STATE_SENDING"},
    {QLatin1String("sent"), "IDS_SMS_STATE_SENT"},
    {QLatin1String("delivered"), "IDS_SMS_STATE_DELIVERED"},
    {QLatin1String("failed"), "IDS_SMS_STATE_FAILED"},
};

QString shownState(const QString& state)
{
    for (const State& known : States) {
        if (state == known.name)
            return text(known.id);
    }
    return {};
}

} // namespace

QString shownAddress(const QString& address)
{
    return address.isEmpty() ? text("IDS_SMS_UNKNOWN") : address;
}

QString shownTime(const Message& message)
{
    const QDateTime time = QDateTime::fromString(message.time, Qt::ISODate);
    const QLocale locale = languageLocale();
    return time.isValid() ? locale.toString(time.date(), QLocale::LongFormat) + QLatin1Char(' ') +
                                locale.toString(time.time(), QLocale::ShortFormat)
                          : QString();
}

QString shownDay(const Message& message)
{
    const QDateTime time = QDateTime::fromString(message.time, Qt::ISODate);
    const QLocale locale = languageLocale();
    if (!time.isValid())
        return {};
    return time.date() == QDate::currentDate() ? locale.toString(time.time(), QLocale::ShortFormat)
                                               : locale.toString(time.date(), QLocale::ShortFormat);
}

QString shownFate(const Message& message)
{
    QStringList parts{shownTime(message), shownState(message.state)};
    parts.removeAll(QString());
    return parts.join(QStringLiteral(" · "));
}
