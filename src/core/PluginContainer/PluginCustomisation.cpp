// Enables and disables plugins by the rules for operator, modem, SIM and group.
#include "PluginContainer/PluginContainer.h"

#include "PluginContainer/CustomisationRules_p.h"
#include "PluginContainer/PluginContainer_p.h"
#include "PluginContainer/PluginInfo.h"
#include "common/Log.h"

#include <QMutexLocker>

#include <algorithm>

namespace {

/// Copies of the container's records, to compare with after a switch.
std::vector<std::unique_ptr<PluginInfo>> copiesOf(const QList<PluginInfo*>& plugins)
{
    std::vector<std::unique_ptr<PluginInfo>> copies;
    copies.reserve(static_cast<std::size_t>(plugins.size()));
    for (const PluginInfo* info : plugins) {
        copies.push_back(std::make_unique<PluginInfo>(info->m_strName, info->m_strClsid, info->m_strUrl, 0,
                                                      info->m_bActive, info->m_bStatic, info->m_bSettingTitle,
                                                      info->m_bLoaded));
        copies.back()->m_bEnabled = info->m_bEnabled;
        copies.back()->SetInitialized(info->m_bInitialized);
    }
    return copies;
}

void logChange(const CustomisationRules::Change& change, const char* function)
{
    if (change.isByKey)
        LOG_DEBUG(change.isEnabling ? "%s: %s: need to enable pPluginInfo->Clsid ()"
                                    : "%s: %s: need to disable pPluginInfo->Clsid ()",
                  LOG_FILE, function);
    else
        LOG_DEBUG(change.isEnabling ? "%s: %s: need to enable %s" : "%s: %s: need to disable %s", LOG_FILE,
                  function, qUtf8Printable(change.clsid));
}

} // namespace

void PluginContainer::updatePluginInfo(QString clsid, bool enable)
{
    const QMutexLocker locker(&m_mutex);
    PluginInfo* const info = m_pHashPlugins->value(clsid);
    if (!info)
        return;
    info->m_bEnabled = enable;
    LOG_DEBUG("updatePluginInfo: %s %s plugin", enable ? "Enabling" : "Disabling", qUtf8Printable(clsid));
}

void PluginContainer::processFromSet(QSet<QString>* set, bool enable)
{
    const QMutexLocker locker(&m_mutex);
    LOG_DEBUG("%s: %s: %s: enabling from set", LOG_TIME, LOG_FILE, LOG_FUNCTION);
    for (const QString& clsid : qAsConst(*set)) {
        updatePluginInfo(clsid, enable);
        d->decisions.noteCommon(clsid, m_strCustomizeName);
    }
}

void PluginContainer::processFromList(QString key, QHash<QString, QString>* table, bool enable)
{
    const QMutexLocker locker(&m_mutex);
    CustomisationRules::anyMatch(*table, key, [&](const QString& ruleKey, const QString& clsid) {
        updatePluginInfo(clsid, enable);
        d->decisions.noteKey(clsid, ruleKey, enable);
        return false;
    });
}

void PluginContainer::updateCommonOperatorCustomization()
{
    LOG_DEBUG("%s: %s: %s: enabling based on common and operator", LOG_TIME, LOG_FILE, LOG_FUNCTION);
    processFromSet(m_pCommonSet, true);
}

void PluginContainer::updateDeviceCustomization(QString key)
{
    if (key.isEmpty())
        return;
    const QMutexLocker locker(&m_mutex);
    LOG_DEBUG("%s: %s: %s: for device %s!!!", LOG_TIME, LOG_FILE, LOG_FUNCTION, qUtf8Printable(key));
    processFromList(key, m_pEnableTable, true);
    processFromList(key, m_pDisableTable, false); // last: "remove" takes precedence over "add"
}

void PluginContainer::ApplyCustomizationForDevice(QString key)
{
    const QMutexLocker locker(&m_mutex);
    LOG_DEBUG("%s: %s: applying customization for device %s", LOG_FILE, LOG_FUNCTION, qUtf8Printable(key));
    disableAllPlugins();
    updateCommonOperatorCustomization();
    updateDeviceCustomization(std::move(key));
}

bool PluginContainer::IsCustomizationForDevice(QString key)
{
    LOG_DEBUG("%s: %s: entered,,,", LOG_FILE, LOG_FUNCTION);
    const QMutexLocker locker(&m_mutex);
    const CustomisationRules rules(*m_pEnableTable, *m_pDisableTable);
    const auto change = rules.firstChange(key, *m_pHashPlugins, *m_pListPlugins);
    if (change)
        logChange(*change, LOG_FUNCTION);
    return change.has_value();
}

bool PluginContainer::HasRulesFor(const QString& key) const
{
    const QMutexLocker locker(&m_mutex);
    return CustomisationRules(*m_pEnableTable, *m_pDisableTable).hasRulesFor(key);
}

QString PluginContainer::KeyForModem(const QString& name, const QString& imsi, const QString& gid) const
{
    const QString imsiKey = CustomisationKeys::Imsi + imsi;
    if (!imsi.isEmpty() && HasRulesFor(imsiKey))
        return imsiKey;
    if (!gid.isEmpty() && m_listGIDGroups.contains(gid))
        return CustomisationKeys::Gid + gid;
    return name;
}

void PluginContainer::HandleDeviceSwitched(QString device, QList<QString>& enabledNow,
                                           QList<QString>& disabledNow)
{
    const QMutexLocker locker(&m_mutex);
    const auto before = copiesOf(*m_pListPlugins);
    ApplyCustomizationForDevice(std::move(device));
    const int count = std::min(static_cast<int>(before.size()), m_pListPlugins->size());
    for (int i = 0; i < count; ++i) {
        const PluginInfo& then = *before[static_cast<std::size_t>(i)];
        const PluginInfo& now = *m_pListPlugins->at(i);
        if (then.m_strClsid == now.m_strClsid && then.m_bEnabled != now.m_bEnabled)
            (now.m_bEnabled ? enabledNow : disabledNow).append(now.m_strClsid);
    }
}
