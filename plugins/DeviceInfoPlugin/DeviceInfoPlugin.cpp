#include "DeviceInfoPlugin.h"

#include "support/Modems.h"
#include "support/Page.h"
#include "support/Text.h"

#include <QVBoxLayout>

namespace {

class DeviceInfoPage : public Page
{
public:
    explicit DeviceInfoPage(QWidget* parent)
        : Page("IDS_MODEM_TITLE", "IDS_MODEM_LEAD", Look::Sign::Modem, parent)
    {
        keepTranslated(this, [this] { refresh(); });
    }

    void refresh();

private:
    static Card* modemCard(const Modem& modem);
    static Card* emptyCard();
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

Card* DeviceInfoPage::emptyCard()
{
    auto* card = new Card(text("IDS_MODEM_NONE"));
    card->addText(text("IDS_MODEM_NONE_HINT"));
    return card;
}

} // namespace

QWidget* DeviceInfoPlugin::createPage(QWidget* parent)
{
    auto* page = new DeviceInfoPage(parent);
    connect(followDevices(), &DeviceEvents::changed, page, &DeviceInfoPage::refresh);
    return page;
}
