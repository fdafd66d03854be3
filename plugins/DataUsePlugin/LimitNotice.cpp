#include "LimitNotice.h"

#include "PluginContainer/PluginIds.h"
#include "Words.h"
#include "support/Clsids.h"
#include "support/OtherPlugins.h"
#include "support/Text.h"

void showLimitNotice(LimitState state, quint64 used, quint64 limit, const Units& units)
{
    const QString title =
        text(state == LimitState::Reached ? "IDS_DATA_REACHED_TITLE" : "IDS_DATA_NEAR_TITLE");
    callSlot(PluginIds::NotifyService, PluginIds::FirstService, "showNotice",
             {title, usageText(used, limit, units), Clsids::DataUse, QStringLiteral("data-limit")});
}
