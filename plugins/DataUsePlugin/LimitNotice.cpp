#include "LimitNotice.h"

#include "PluginContainer/IPluginContainer.h"
#include "PluginContainer/PluginIds.h"
#include "Startup/Startup.h"
#include "Words.h"
#include "support/Text.h"

#include <QObject>

namespace {

constexpr QLatin1String ThisClsid("C43A8D5E-07B1-4F92-86DA-3E51F9B27A60");

} // namespace

void showLimitNotice(LimitState state, quint64 used, quint64 limit, const Units& units)
{
    QObject* const notifier =
        Startup::GetPluginContainer()->GetPlugin(PluginIds::NotifyService, PluginIds::FirstService);
    if (!notifier)
        return;
    const QString title =
        text(state == LimitState::Reached ? "IDS_DATA_REACHED_TITLE" : "IDS_DATA_NEAR_TITLE");
    QMetaObject::invokeMethod(notifier, "showNotice", Q_ARG(QString, title),
                              Q_ARG(QString, usageText(used, limit, units)), Q_ARG(QString, ThisClsid));
}
