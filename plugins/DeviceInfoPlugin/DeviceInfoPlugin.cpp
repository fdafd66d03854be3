#include "DeviceInfoPlugin.h"

#include "support/Modems.h"
#include "support/Page.h"
#include "support/Text.h"

#include <QVBoxLayout>

namespace {

namespace Texts {
constexpr auto Title = u"Modem";
constexpr auto Lead = u"What is attached to this computer right now.";
constexpr auto Model = u"Model";
constexpr auto Port = u"Attached at";
constexpr auto MadeFor = u"Made for operator";
constexpr auto AnyOperator = u"any operator";
constexpr auto Sim = u"SIM card";
constexpr auto SimPresent = u"inserted";
constexpr auto SimMissing = u"none";
constexpr auto NoModem = u"No modem attached";
constexpr auto NoModemHint = u"Plug in a modem. It is recognised by itself, usually within a few seconds.";
} // namespace Texts

class DeviceInfoPage : public Page
{
public:
    explicit DeviceInfoPage(QWidget* parent)
        : Page(text(Texts::Title), text(Texts::Lead), Look::Sign::Modem, parent)
    {
        refresh();
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
    card->addRow(text(Texts::Model), modem.name);
    card->addRow(text(Texts::Port), modem.port);
    card->addRow(text(Texts::MadeFor),
                 modem.customizeName.isEmpty() ? text(Texts::AnyOperator) : modem.customizeName);
    card->addRow(text(Texts::Sim), text(modem.imsi.isEmpty() ? Texts::SimMissing : Texts::SimPresent));
    return card;
}

Card* DeviceInfoPage::emptyCard()
{
    auto* card = new Card(text(Texts::NoModem));
    card->addText(text(Texts::NoModemHint));
    return card;
}

} // namespace

QWidget* DeviceInfoPlugin::createPage(QWidget* parent)
{
    auto* page = new DeviceInfoPage(parent);
    connect(followDevices(), &DeviceEvents::changed, page, &DeviceInfoPage::refresh);
    return page;
}
