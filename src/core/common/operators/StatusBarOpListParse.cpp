#include "common/StatusBarOpListParse.h"

#include "Change/Change.h"
#include "common/Log.h"

#include <QMutex>

#include <new>
#include <utility>

namespace {

/// Shorter prefixes are never looked up: they would name a country, not an operator.
constexpr int ShortestImsiPrefix = 5;

QMutex instanceMutex;
StatusBarOpListParse* instance = nullptr; // lives until DestroyInstance(), not until the library goes

} // namespace

StatusBarOpListParse* StatusBarOpListParse::GetInstance()
{
    const QMutexLocker locker(&instanceMutex);
    if (!instance)
        instance = new StatusBarOpListParse;
    return instance;
}

void StatusBarOpListParse::DestroyInstance()
{
    const QMutexLocker locker(&instanceMutex);
    delete std::exchange(instance, nullptr);
}

StatusBarOpListParse::StatusBarOpListParse()
    : m_pHashMccMnc(new (std::nothrow) CodeTable<_ST_MCCMNC_ITEM>)
    , m_pHashMccOnly(new (std::nothrow) CodeTable<_ST_MCCMNC_ITEM>)
{
    if (!m_pHashMccMnc || !m_pHashMccOnly) {
        LOG_WARNING("%s: %s: memory creation fails", LOG_FILE, LOG_FUNCTION);
        return;
    }
    LoadFile(QStringLiteral("OperatorList.xml"));
    LoadCPLMNOpListFile(QStringLiteral("CPLMNOpList.xml"));
    LoadCMCCMNCOpListFile(QStringLiteral("CMCCMNCOpList.xml"));
}

_ST_MCCMNC_ITEM StatusBarOpListParse::GetOperatorData(QString mcc, QString mnc)
{
    _ST_MCCMNC_ITEM item = findOperator(mcc, mnc);
    if (item.langid.isEmpty())
        return item;
    const QString translation = Change::tr(item.langid, QStringLiteral("StatusBarMgrPlugin"));
    if (!translation.isEmpty())
        item.shortdescr = translation;
    return item;
}

_ST_MCCMNC_ITEM StatusBarOpListParse::findOperator(const QString& mcc, const QString& mnc) const
{
    if (!m_pHashMccMnc || !m_pHashMccOnly)
        return {};
    if (const _ST_MCCMNC_ITEM* const network = m_pHashMccMnc->find({mcc, mnc}))
        return *network;
    if (const _ST_MCCMNC_ITEM* const country = m_pHashMccOnly->find(QStringView(mcc)))
        return {country->shortdescr + mnc, country->shortdescr, {}, country->langid};
    return {};
}

QString StatusBarOpListParse::GetCPLMNOperatorData(QString imsi)
{
    const QString* const name = m_hashCPLMN.find(imsi, ShortestImsiPrefix);
    if (!name)
        return {};
    LOG_DEBUG("%s: %s: %s: IMSI Contain", LOG_TIME, LOG_FILE, LOG_FUNCTION);
    return *name;
}

QString StatusBarOpListParse::GetCMCCMNCOperatorData(QString const& code)
{
    const QString* const name = m_hashCMCCMNC.find(QStringView(code));
    return name ? *name : QString();
}

QString StatusBarOpListParse::GetLoadFileName()
{
    return m_strFileName;
}

void StatusBarOpListParse::ReleaseData()
{
    LOG_DEBUG("%s: %s: called", LOG_FILE, LOG_FUNCTION);
    for (CodeTable<_ST_MCCMNC_ITEM>* const table : {m_pHashMccMnc.get(), m_pHashMccOnly.get()}) {
        if (table)
            table->clear();
    }
    m_hashCPLMN.clear();
    m_hashCMCCMNC.clear();
}
