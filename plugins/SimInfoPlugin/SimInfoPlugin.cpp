#include "SimInfoPlugin.h"

#include "Imsi.h"
#include "support/ModemInUse.h"
#include "support/Page.h"
#include "support/Text.h"

#include <QVBoxLayout>

namespace {

class SimInfoPage : public Page
{
public:
    explicit SimInfoPage(QWidget* parent)
        : Page("IDS_SIM_TITLE", "IDS_SIM_LEAD", Look::Sign::Sim, parent)
    {
        keepTranslated(this, [this] { refresh(); });
    }

    void refresh();

private:
    void showSim(const Modem& modem);
    void showNoSim();
};

void SimInfoPage::refresh()
{
    clearContent();
    const Modems modems = attachedModems();
    const Modem modem = modems.isEmpty() ? Modem() : modemInUse(modems);
    if (modem.imsi.isEmpty())
        showNoSim();
    else
        showSim(modem);
    content()->addStretch();
}

void SimInfoPage::showSim(const Modem& modem)
{
    const Imsi imsi = Imsi::parse(modem.imsi);
    auto* identity = new Card(text("IDS_SIM_IDENTITY"));
    identity->addRow(text("IDS_SIM_IMSI"), modem.imsi);
    identity->addRow(text("IDS_SIM_COUNTRY_CODE"), imsi.countryCode);
    identity->addRow(text("IDS_SIM_NETWORK_CODE"), imsi.networkCode);
    identity->addRow(text("IDS_SIM_SUBSCRIBER"), imsi.subscriberNumber);
    content()->addWidget(identity);

    auto* group = new Card(text("IDS_SIM_GROUP"));
    group->addRow(text("IDS_SIM_GROUP_ID"), modem.gid.isEmpty() ? text("IDS_SIM_NO_GROUP") : modem.gid);
    content()->addWidget(group);
}

void SimInfoPage::showNoSim()
{
    auto* card = new Card(text("IDS_SIM_NONE"));
    card->addText(text("IDS_SIM_NONE_HINT"));
    content()->addWidget(card);
}

} // namespace

QWidget* SimInfoPlugin::createPage(QWidget* parent)
{
    auto* page = new SimInfoPage(parent);
    connect(followDevices(), &DeviceEvents::changed, page, &SimInfoPage::refresh);
    return page;
}
