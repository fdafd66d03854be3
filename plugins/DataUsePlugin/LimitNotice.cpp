#include "LimitNotice.h"

#include "Clsid.h"
#include "PluginContainer/IPluginContainer.h"
#include "PluginContainer/PluginIds.h"
#include "Startup/Startup.h"
#include "Words.h"
#include "support/Text.h"

#include <QObject>

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
