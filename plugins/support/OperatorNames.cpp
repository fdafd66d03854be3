#include "support/OperatorNames.h"

#include "common/StatusBarOpListParse.h"

namespace {

constexpr int CountryDigits = 3; // of a network's code; the rest is the network's number

} // namespace

OperatorNames::OperatorNames(QObject* parent)
    : BackgroundWork("operator lists", parent)
{
    begin();
}

OperatorNames::~OperatorNames()
{
    stop(); // the lists stay: other plugins may be using them
}

void OperatorNames::work()
{
    StatusBarOpListParse::GetInstance(); // reads them
}

QString OperatorNames::nameOf(const QString& network, const QString& imsi, const QString& reported) const
{
    if (!isFinished())
        return {};
    StatusBarOpListParse* const lists = StatusBarOpListParse::GetInstance();
    const _ST_MCCMNC_ITEM item =
        lists->GetOperatorData(network.left(CountryDigits), network.mid(CountryDigits));
    // The answer for a network that is not listed is about its country.
    const _ST_MCCMNC_ITEM country = lists->GetOperatorData(network.left(CountryDigits), {});
    const bool isListed =
        !item.descr.isEmpty() || item.fulldescr != country.fulldescr || item.langid != country.langid;
    const bool isHome = imsi.startsWith(network);
    for (const QString& name :
         {isListed ? item.shortdescr : QString(), lists->GetCMCCMNCOperatorData(network), reported,
          isHome ? lists->GetCPLMNOperatorData(imsi) : QString(), item.shortdescr}) {
        if (!name.isEmpty())
            return name;
    }
    return network;
}
