#include "ConnectionSwitch.h"

#include "PluginContainer/PluginIds.h"
#include "support/Clsids.h"
#include "support/OtherPlugins.h"

#include <QAction>

namespace {

/// Does what the button of the page does. An operator's plugin without this slot is shown instead.
void switchConnection()
{
    if (!callSlot(Clsids::Connection, PluginIds::FirstService, "switchConnection", {}))
        showPage(Clsids::Connection);
}

} // namespace

void ConnectionSwitch::addTo(MenuCommands& commands)
{
    commands.insert(QStringLiteral("Connect"),
                    [this](QAction* action, const QString&) { add(action, true); });
    commands.insert(QStringLiteral("Disconnect"),
                    [this](QAction* action, const QString&) { add(action, false); });
}

void ConnectionSwitch::add(QAction* action, bool connects)
{
    connect(action, &QAction::triggered, this, &switchConnection);
    m_entries.append({action, connects});
    update(m_entries.last());
}

void ConnectionSwitch::follow(const TrayStatus& status)
{
    m_status = status;
    for (const Entry& entry : qAsConst(m_entries))
        update(entry);
}

void ConnectionSwitch::update(const Entry& entry) const
{
    if (!entry.action)
        return; // its menu has been rebuilt
    entry.action->setVisible(entry.connects != m_status.canDisconnect);
    entry.action->setEnabled(entry.connects ? m_status.canConnect : m_status.canDisconnect);
}
