#include "common/operators/StatusBarOpListParse_p.h"

#include "Change/Change.h"
#include "common/Log.h"

#include <mutex>
#include <utility>

namespace {

/// Shorter prefixes would name a country, not an operator.
constexpr int ShortestImsiPrefix = 5;

// Neither is destroyed before the process ends: a worker may still be reading the lists.
std::mutex instanceMutex;
StatusBarOpListParse* instance = nullptr;

} // namespace

StatusBarOpListParse* StatusBarOpListParse::GetInstance()
{
    const std::lock_guard<std::mutex> lock(instanceMutex);
    if (!instance)
        instance = new StatusBarOpListParse;
    return instance;
}

void StatusBarOpListParse::DestroyInstance()
{
    const std::lock_guard<std::mutex> lock(instanceMutex);
    delete std::exchange(instance, nullptr);
}

StatusBarOpListParse::StatusBarOpListParse()
    : m_d(std::make_unique<Private>())
{
    if (!m_d->networks || !m_d->countries) {
        LOG_WARNING("%s: %s: memory creation fails", LOG_FILE, LOG_FUNCTION);
        return;
    }
    LoadFile(QStringLiteral("OperatorList.xml"));
    LoadCPLMNOpListFile(QStringLiteral("CPLMNOpList.xml"));
    LoadCMCCMNCOpListFile(QStringLiteral("CMCCMNCOpList.xml"));
}

StatusBarOpListParse::~StatusBarOpListParse() = default;

_ST_MCCMNC_ITEM StatusBarOpListParse::GetOperatorData(QString mcc, QString mnc)
{
    _ST_MCCMNC_ITEM item = m_d->findOperator(mcc, mnc);
    if (item.langid.isEmpty())
        return item;
    const QString translation = Change::tr(item.langid, QStringLiteral("StatusBarMgrPlugin"));
    if (!translation.isEmpty())
        item.shortdescr = translation;
    return item;
}

_ST_MCCMNC_ITEM StatusBarOpListParse::Private::findOperator(const QString& mcc, const QString& mnc) const
{
    if (!networks || !countries)
        return {};
    if (const _ST_MCCMNC_ITEM* const network = networks->find({mcc, mnc}))
        return *network;
    if (const _ST_MCCMNC_ITEM* const country = countries->find(QStringView(mcc)))
        return {country->shortdescr + mnc, country->shortdescr, {}, country->langid};
    return {};
}

QString StatusBarOpListParse::GetCPLMNOperatorData(QString imsi)
{
    const QString* const name = m_d->imsiPrefixes.find(imsi, ShortestImsiPrefix);
    if (!name)
        return {};
    LOG_DEBUG("%s: %s: %s: IMSI Contain", LOG_TIME, LOG_FILE, LOG_FUNCTION);
    return *name;
}

QString StatusBarOpListParse::GetCMCCMNCOperatorData(QString const& code)
{
    const QString* const name = m_d->codes.find(QStringView(code));
    return name ? *name : QString();
}

QString StatusBarOpListParse::GetLoadFileName()
{
    return m_d->fileName;
}

void StatusBarOpListParse::ReleaseData()
{
    LOG_DEBUG("%s: %s: called", LOG_FILE, LOG_FUNCTION);
    for (Private::ItemTable* const table : {m_d->networks.get(), m_d->countries.get()}) {
        if (table)
            table->clear();
    }
    m_d->imsiPrefixes.clear();
    m_d->codes.clear();
}
