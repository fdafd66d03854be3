// Records and look-ups of the container.
#include "PluginContainer/PluginContainer.h"

#include "PluginContainer/PluginContainer_p.h"
#include "PluginContainer/PluginInfo.h"
#include "common/Log.h"

#include <QMutexLocker>

namespace {

template <typename Predicate>
QStringList clsidsWhere(const QList<PluginInfo*>& plugins, Predicate isWanted)
{
    QStringList clsids;
    for (const PluginInfo* info : plugins)
        if (isWanted(*info))
            clsids.append(info->m_strClsid);
    return clsids;
}

PluginStatus::State stateOf(const PluginInfo& info, PluginStatus::Fault fault)
{
    using State = PluginStatus::State;
    if (!info.m_bLoaded)
        return info.m_bEnabled ? State::Enabled : State::Disabled;
    const bool isRunning = info.m_bInitialized && fault != PluginStatus::Fault::InitThrew;
    return isRunning ? State::Initialized : State::Loaded;
}

void addFault(PluginStatus& status, const PluginFault& fault)
{
    status.fault = fault.code;
    status.error = fault.text;
    status.library = fault.library;
    status.wanted = fault.wanted;
    status.found = fault.found;
}

} // namespace

bool PluginContainer::IsPluginAvailable(QString clsid)
{
    const QMutexLocker locker(&m_mutex);
    const PluginInfo* const info = m_pHashPlugins->value(clsid);
    const bool isAvailable = info && info->m_bEnabled && getPlugin(clsid, false, 0);
    if (isAvailable)
        LOG_DEBUG("%s: %s: %s is available", LOG_FILE, LOG_FUNCTION, qUtf8Printable(clsid));
    else
        LOG_DEBUG("%s: %s: %s is not available", LOG_FILE, LOG_FUNCTION, qUtf8Printable(clsid));
    return isAvailable;
}

bool PluginContainer::IsPluginLoaded(QString clsid)
{
    const QMutexLocker locker(&m_mutex);
    const PluginInfo* const info = findLogged(clsid, LOG_FUNCTION);
    return info && info->m_bLoaded;
}

int PluginContainer::GetPluginType(QString clsid)
{
    const QMutexLocker locker(&m_mutex);
    const PluginInfo* const info = findLogged(clsid, LOG_FUNCTION);
    return info ? info->m_iType : -1;
}

PluginInfo* PluginContainer::findLogged(const QString& clsid, const char* function) const
{
    LOG_DEBUG("%s: %s: entered, strPluginClsid = %s", LOG_FILE, function, qUtf8Printable(clsid));
    PluginInfo* const info = m_pHashPlugins->value(clsid);
    if (info)
        LOG_DEBUG("%s: %s: entered, strPluginClsid = %s, %d", LOG_FILE, function, qUtf8Printable(clsid),
                  info->m_bLoaded);
    return info;
}

QString PluginContainer::GetClsidByName(QString name)
{
    const QMutexLocker locker(&m_mutex);
    QString clsid;
    for (const PluginInfo* info : *m_pListPlugins)
        if (info->m_strName == name)
            clsid = info->m_strClsid; // the last one of several wins
    return clsid;
}

QString PluginContainer::GetPluginNameByClsid(QString clsid)
{
    const QMutexLocker locker(&m_mutex);
    LOG_DEBUG("%s: %s: entered", LOG_FILE, LOG_FUNCTION);
    return getPluginNameByClsid(std::move(clsid));
}

QString PluginContainer::getPluginNameByClsid(QString clsid)
{
    LOG_DEBUG("%s: %s: entered", LOG_FILE, LOG_FUNCTION);
    const PluginInfo* const info = m_pHashPlugins->value(clsid);
    return info ? info->m_strName : QString();
}

QStringList PluginContainer::GetLoadedPluginClsids()
{
    const QMutexLocker locker(&m_mutex);
    const QStringList clsids =
        clsidsWhere(*m_pListPlugins, [](const PluginInfo& info) { return info.m_bLoaded; });
    for (const QString& clsid : clsids)
        LOG_DEBUG("%s: %s: %s loaded", LOG_FILE, LOG_FUNCTION, qUtf8Printable(clsid));
    return clsids;
}

QStringList PluginContainer::GetPluginClsidsByType(int type)
{
    const QMutexLocker locker(&m_mutex);
    const QStringList clsids =
        clsidsWhere(*m_pListPlugins, [type](const PluginInfo& info) { return info.m_iType == type; });
    for (const QString& clsid : clsids)
        LOG_DEBUG("%s: %s: %s type is %d", LOG_FILE, LOG_FUNCTION, qUtf8Printable(clsid), type);
    return clsids;
}

QStringList PluginContainer::GetSettingsPlugins()
{
    const QMutexLocker locker(&m_mutex);
    const QStringList clsids =
        clsidsWhere(*m_pListPlugins, [](const PluginInfo& info) { return info.m_bSettingTitle; });
    for (const QString& clsid : clsids)
        LOG_DEBUG("%s: %s: %s is setting enabled", LOG_FILE, LOG_FUNCTION, qUtf8Printable(clsid));
    return clsids;
}

PluginStatusList PluginContainer::GetPluginStatus() const
{
    const QMutexLocker locker(&m_mutex);
    const PluginDecisions::RuleLines lines = d->decisions.ruleLines();
    PluginStatusList report;
    report.reserve(m_pListPlugins->size() + d->decisions.removed().size());
    for (const PluginInfo* info : *m_pListPlugins) {
        PluginStatus status = PluginDecisions::statusOf(*info);
        const PluginDecisions::Decision decision = d->decisions.decision(info->m_strClsid);
        status.rule = decision.rule;
        status.key = decision.key;
        status.ruleLine = d->decisions.lineOf(info->m_strClsid, lines);
        status.ruleFile = status.ruleLine > 0 ? d->rulesFile : QString();
        addFault(status, d->decisions.fault(info->m_strClsid));
        status.state = stateOf(*info, status.fault);
        report.append(status);
    }
    return report + d->decisions.removed();
}

ConfigurationFaultList PluginContainer::GetConfigurationFaults() const
{
    const QMutexLocker locker(&m_mutex);
    return d->configurationFaults;
}

void PluginContainer::removePluginInfo(QString clsid)
{
    const QMutexLocker locker(&m_mutex);
    PluginInfo* const info = m_pHashPlugins->value(clsid);
    if (!info)
        return;
    m_pListPlugins->removeAll(info);
    m_pHashPlugins->remove(clsid);
    delete info;
    LOG_DEBUG("removed %s", qUtf8Printable(clsid));
}

bool PluginContainer::isPluginInList(QString clsid)
{
    const QMutexLocker locker(&m_mutex);
    return m_pHashPlugins->contains(clsid);
}

void PluginContainer::disableAllPlugins()
{
    const QMutexLocker locker(&m_mutex);
    for (PluginInfo* info : *m_pListPlugins)
        info->m_bEnabled = false;
    d->decisions.reset();
}
