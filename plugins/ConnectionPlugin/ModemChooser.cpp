#include "ModemChooser.h"

#include "support/Text.h"

#include <QActionGroup>
#include <QMenu>

namespace {

QString nameOf(const Modem& modem)
{
    return modem.port.isEmpty() ? modem.name : modem.name + QStringLiteral(" \u00b7 ") + modem.port;
}

} // namespace

ModemChooser::ModemChooser(QWidget* parent)
    : QToolButton(parent)
{
    setMenu(new QMenu(this));
    setPopupMode(InstantPopup);
    hide();
    keepTranslated(this, [this] {
        setToolTip(::text("IDS_CONN_IN_USE"));
        setAccessibleName(toolTip());
    });
}

void ModemChooser::showModems(const Modems& modems, const Modem& inUse)
{
    setVisible(modems.size() > 1);
    if (modems == m_modems && inUse == m_inUse)
        return; // the menu may be open
    m_modems = modems;
    m_inUse = inUse;
    setText(nameOf(inUse));
    fillMenu();
}

void ModemChooser::fillMenu()
{
    menu()->clear();
    auto* group = new QActionGroup(menu());
    for (const Modem& modem : qAsConst(m_modems)) {
        QAction* const entry = menu()->addAction(nameOf(modem));
        entry->setCheckable(true);
        entry->setChecked(modem == m_inUse);
        group->addAction(entry);
        connect(entry, &QAction::triggered, this, [this, modem] { Q_EMIT chosen(modem); });
    }
}
