#include "OperatorNames.h"

#include "common/StatusBarOpListParse.h"

static constexpr int CountryDigits = 3; // of a network's code; the rest is the network's number

OperatorNames::OperatorNames(QObject* parent)
    : BackgroundWork("operator lists", parent)
{
    begin();
}

OperatorNames::~OperatorNames()
{
    stop();
    StatusBarOpListParse::DestroyInstance();
}

void OperatorNames::work()
{
    StatusBarOpListParse::GetInstance(); // reads them
}

QString OperatorNames::nameOf(const QString& network, const QString& imsi) const
{
    if (!isFinished())
        return {};
    StatusBarOpListParse* const lists = StatusBarOpListParse::GetInstance();
    const _ST_MCCMNC_ITEM item =
        lists->GetOperatorData(network.left(CountryDigits), network.mid(CountryDigits));
    // Of a network that is not listed the full name is the country's; listed ones give their own.
    const bool isListed =
        !item.descr.isEmpty() || item.shortdescr != item.fulldescr + network.mid(CountryDigits);
    const bool isHome = imsi.startsWith(network);
    for (const QString& name :
         {isListed ? item.shortdescr : QString(), lists->GetCMCCMNCOperatorData(network),
          isHome ? lists->GetCPLMNOperatorData(imsi) : QString(), item.shortdescr}) {
        if (!name.isEmpty())
            return name;
    }
    return network;
}
