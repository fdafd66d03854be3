#include "SimInfoPlugin.h"

#include "Imsi.h"
#include "support/DetailsCard.h"
#include "support/ModemInUse.h"
#include "support/Text.h"

namespace {

QString homeNetwork(const QString& digits)
{
    const Imsi imsi = Imsi::parse(digits);
    return digits.isEmpty() ? QString() : imsi.countryCode + QLatin1Char(' ') + imsi.networkCode;
}

void showSim(DetailsCard* card)
{
    const Modem modem = modemInUse();
    card->showDetails(text("IDS_SIM_IDENTITY"),
                      {{text("IDS_SIM_NUMBER"), modemValue(modem.id, QStringLiteral("number")), true},
                       {text("IDS_SIM_IMSI"), modem.imsi, true},
                       {text("IDS_SIM_ICCID"), modemValue(modem.id, QStringLiteral("iccid")), true},
                       {text("IDS_SIM_HOME_NETWORK"), homeNetwork(modem.imsi)},
                       {text("IDS_SIM_GROUP_ID"), modem.gid}});
}

} // namespace

QWidget* SimInfoPlugin::createPage(QWidget* parent)
{
    auto* card = new DetailsCard(parent);
    const auto refresh = [card] {
        showSim(card);
    };
    connect(followDevices(), &DeviceEvents::changed, card, refresh);
    connect(followDevices(), &DeviceEvents::statusChanged, card, refresh);
    keepTranslated(card, refresh);
    return card;
}
