#include "LimitNotice.h"

#include "PluginContainer/IPluginContainer.h"
#include "PluginContainer/PluginIds.h"
#include "Startup/Startup.h"
#include "support/Numbers.h"
#include "support/Text.h"
#include "support/Units.h"

#include <QGuiApplication>
#include <QObject>

namespace {

constexpr QLatin1String ThisClsid("C43A8D5E-07B1-4F92-86DA-3E51F9B27A60");

} // namespace

QString isolated(const QString& part)
{
    constexpr QChar firstStrongIsolate(0x2068);
    constexpr QChar popDirectionalIsolate(0x2069);
    const bool isNeeded = QGuiApplication::layoutDirection() == Qt::RightToLeft;
    return isNeeded ? firstStrongIsolate + part + popDirectionalIsolate : part;
}

QString usageText(quint64 used, quint64 limit, const Units& units)
{
    if (limit == 0)
        return units.volume(used);
    return text("IDS_DATA_OF_LIMIT")
        .arg(isolated(units.volume(used)), isolated(units.shortVolume(limit)),
             numberText(shareOf(used, limit)));
}

void showLimitNotice(LimitState state, quint64 used, quint64 limit, const Units& units)
{
    QObject* const notifier =
        Startup::GetPluginContainer()->GetPlugin(PluginIds::NotifyService, PluginIds::FirstService);
    if (!notifier)
        return;
    const QString title =
        text(state == LimitState::Reached ? "IDS_DATA_REACHED_TITLE" : "IDS_DATA_NEAR_TITLE");
    QMetaObject::invokeMethod(notifier, "showNotice", Q_ARG(QString, title),
                              Q_ARG(QString, usageText(used, limit, units)), Q_ARG(QString, ThisClsid),
                              Q_ARG(QString, QStringLiteral("data-limit")));
}
