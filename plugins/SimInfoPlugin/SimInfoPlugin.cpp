#include "SimInfoPlugin.h"

#include "Imsi.h"
#include "support/Modems.h"
#include "support/Page.h"
#include "support/Text.h"

#include <QVBoxLayout>

namespace {

namespace Texts {
constexpr auto Title = u"SIM card";
constexpr auto Lead = u"Who the network takes you for.";
constexpr auto Identity = u"Subscriber identity";
constexpr auto Imsi = u"IMSI";
constexpr auto CountryCode = u"Country code (MCC)";
constexpr auto NetworkCode = u"Network code (MNC)";
constexpr auto SubscriberNumber = u"Subscriber (MSIN)";
constexpr auto Group = u"Group";
constexpr auto GroupIdentifier = u"Group identifier (GID)";
constexpr auto NoGroup = u"none";
constexpr auto NoSim = u"No SIM card";
constexpr auto NoSimHint = u"Insert a SIM card into the modem and attach it again.";
} // namespace Texts

class SimInfoPage : public Page
{
public:
    explicit SimInfoPage(QWidget* parent)
        : Page(text(Texts::Title), text(Texts::Lead), Look::Sign::Sim, parent)
    {
        refresh();
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
    if (modems.isEmpty() || modems.first().imsi.isEmpty())
        showNoSim();
    else
        showSim(modems.first());
    content()->addStretch();
}

void SimInfoPage::showSim(const Modem& modem)
{
    const auto imsi = ::Imsi::parse(modem.imsi);
    auto* identity = new Card(text(Texts::Identity));
    identity->addRow(text(Texts::Imsi), modem.imsi);
    identity->addRow(text(Texts::CountryCode), imsi.countryCode);
    identity->addRow(text(Texts::NetworkCode), imsi.networkCode);
    identity->addRow(text(Texts::SubscriberNumber), imsi.subscriberNumber);
    content()->addWidget(identity);

    auto* group = new Card(text(Texts::Group));
    group->addRow(text(Texts::GroupIdentifier), modem.gid.isEmpty() ? text(Texts::NoGroup) : modem.gid);
    content()->addWidget(group);
}

void SimInfoPage::showNoSim()
{
    auto* card = new Card(text(Texts::NoSim));
    card->addText(text(Texts::NoSimHint));
    content()->addWidget(card);
}

} // namespace

QWidget* SimInfoPlugin::createPage(QWidget* parent)
{
    auto* page = new SimInfoPage(parent);
    connect(followDevices(), &DeviceEvents::changed, page, &SimInfoPage::refresh);
    return page;
}
