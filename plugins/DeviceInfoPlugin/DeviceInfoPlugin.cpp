#include "DeviceInfoPlugin.h"

#include "support/Modems.h"
#include "support/Page.h"
#include "support/Text.h"

#include <QVBoxLayout>

namespace {

class DeviceInfoPage : public Page
{
public:
    /// @param events must outlive the page
    DeviceInfoPage(const DeviceEvents* events, QWidget* parent)
        : Page("IDS_MODEM_TITLE", "IDS_MODEM_LEAD", Look::Sign::Modem, parent)
        , m_events(events)
    {
        connect(events, &DeviceEvents::changed, this, &DeviceInfoPage::refresh);
        keepTranslated(this, [this] { refresh(); });
    }

private:
    void refresh();
    static Card* modemCard(const Modem& modem);
    Card* emptyCard() const;

    const DeviceEvents* m_events;
};

void DeviceInfoPage::refresh()
{
    clearContent();
    const Modems modems = attachedModems();
    for (const Modem& modem : modems)
        content()->addWidget(modemCard(modem));
    if (modems.isEmpty())
        content()->addWidget(emptyCard());
    content()->addStretch();
}

Card* DeviceInfoPage::modemCard(const Modem& modem)
{
    auto* card = new Card(modem.name);
    card->addRow(text("IDS_MODEM_MODEL"), modem.name);
    card->addRow(text("IDS_MODEM_PORT"), modem.port);
    card->addRow(text("IDS_MODEM_MADE_FOR"),
                 modem.customizeName.isEmpty() ? text("IDS_MODEM_ANY_OPERATOR") : modem.customizeName);
    card->addRow(text("IDS_MODEM_SIM"),
                 text(modem.imsi.isEmpty() ? "IDS_MODEM_SIM_MISSING" : "IDS_MODEM_SIM_PRESENT"));
    return card;
}

Card* DeviceInfoPage::emptyCard() const
{
    const bool wasRefused = m_events->wasRefused();
    auto* card = new Card(text(wasRefused ? "IDS_MODEM_REFUSED" : "IDS_MODEM_NONE"));
    card->addText(text(wasRefused ? "IDS_MODEM_REFUSED_HINT" : "IDS_MODEM_NONE_HINT"));
    return card;
}

} // namespace

QWidget* DeviceInfoPlugin::createPage(QWidget* parent)
{
    return new DeviceInfoPage(followDevices(), parent);
}
