// Decides which plugins are enabled for the attached modem, the operator, the SIM and its group.
#include "PluginContainer/PluginContainer.h"

#include "PluginContainer/PluginContainer_p.h"
#include "PluginContainer/PluginInfo.h"
#include "common/Log.h"

#include <QMutexLocker>

#include <algorithm>

namespace {

constexpr QLatin1String CommonKey("common");

bool isImsiKey(const QString& key)
{
    return key.startsWith(QLatin1String("IMSI"));
}

/// Visits the rules (table key and clsid) that a table lists under `key` until `visit` answers true. An IMSI
/// key also matches every table key that it contains, so that the rules of all configured prefixes of an IMSI
/// apply.
template <typename Visit>
bool anyMatch(const QHash<QString, QString>& table, const QString& key, Visit visit)
{
    if (!isImsiKey(key)) {
        for (auto pair = table.constFind(key); pair != table.constEnd() && pair.key() == key; ++pair)
            if (visit(pair.key(), pair.value()))
                return true;
        return false;
    }
    for (auto pair = table.constBegin(); pair != table.constEnd(); ++pair)
        if (key.contains(pair.key()) && visit(pair.key(), pair.value()))
            return true;
    return false;
}

/// Whether a table lists the clsid under exactly this key.
bool lists(const QHash<QString, QString>& table, const QString& key, const QString& clsid)
{
    for (auto pair = table.constFind(key); pair != table.constEnd() && pair.key() == key; ++pair)
        if (pair.value() == clsid)
            return true;
    return false;
}

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
    anyMatch(*table, key, [&](const QString& ruleKey, const QString& clsid) {
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
    processFromList(key, m_pDisableTable, false); // last: a "remove" beats an "add"
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
    return keyRulesChangeSomething(key) || commonRulesChangeSomething(key);
}

bool PluginContainer::keyRulesChangeSomething(const QString& key) const
{
    const auto isInState = [this](const QString& clsid, bool enabled) {
        const PluginInfo* const info = m_pHashPlugins->value(clsid);
        return info && info->m_bEnabled == enabled;
    };
    constexpr const char* function = "IsCustomizationForDevice";
    if (anyMatch(*m_pEnableTable, key,
                 [&](const QString&, const QString& clsid) { return isInState(clsid, false); })) {
        LOG_DEBUG("%s: %s: need to enable pPluginInfo->Clsid ()", LOG_FILE, function);
        return true;
    }
    if (anyMatch(*m_pDisableTable, key,
                 [&](const QString&, const QString& clsid) { return isInState(clsid, true); })) {
        LOG_DEBUG("%s: %s: need to disable pPluginInfo->Clsid ()", LOG_FILE, function);
        return true;
    }
    return false;
}

/// Compares keys exactly, also those of an IMSI: right after the rules of an IMSI prefix were applied this
/// may still answer true.
bool PluginContainer::commonRulesChangeSomething(const QString& key) const
{
    constexpr const char* function = "IsCustomizationForDevice";
    for (auto pair = m_pEnableTable->constFind(CommonKey);
         pair != m_pEnableTable->constEnd() && pair.key() == CommonKey; ++pair) {
        const PluginInfo* const info = m_pHashPlugins->value(pair.value());
        if (info && !info->m_bEnabled && !lists(*m_pDisableTable, key, pair.value())) {
            LOG_DEBUG("%s: %s: need to enable %s", LOG_FILE, function, qUtf8Printable(pair.value()));
            return true;
        }
    }
    for (const PluginInfo* info : qAsConst(*m_pListPlugins)) {
        if (info->m_bEnabled && !lists(*m_pEnableTable, key, info->m_strClsid) &&
            !lists(*m_pEnableTable, CommonKey, info->m_strClsid)) {
            LOG_DEBUG("%s: %s: need to disable %s", LOG_FILE, function, qUtf8Printable(info->m_strClsid));
            return true;
        }
    }
    return false;
}

bool PluginContainer::HasRulesFor(const QString& key) const
{
    const auto found = [](const QString&, const QString&) {
        return true;
    };
    const QMutexLocker locker(&m_mutex);
    return !key.isEmpty() &&
           (anyMatch(*m_pEnableTable, key, found) || anyMatch(*m_pDisableTable, key, found));
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

void PluginContainer::StartInitPluginsConfig()
{
    const QString device = getDeviceName(false);
    if (d->isClosing)
        return; // the lock may go with the container
    const QMutexLocker locker(&m_mutex);
    if (d->isClosing)
        return; // the plugins that are running now are those to be shut down
    updateDeviceCustomization(device);
    m_bConfigInitialized = true;
}
