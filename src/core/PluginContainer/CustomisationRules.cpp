#include "PluginContainer/CustomisationRules_p.h"

#include "PluginContainer/PluginInfo.h"

#include <QSet>

namespace {

/// The plugins that a table lists under exactly this key.
QSet<QString> listedUnder(const CustomisationRules::Table& table, const QString& key)
{
    QSet<QString> clsids;
    for (auto rule = table.constFind(key); rule != table.constEnd() && rule.key() == key; ++rule)
        clsids.insert(rule.value());
    return clsids;
}

} // namespace

bool CustomisationRules::hasRulesFor(const QString& key) const
{
    const auto found = [](const QString&, const QString&) {
        return true;
    };
    return !key.isEmpty() && (anyMatch(m_enableTable, key, found) || anyMatch(m_disableTable, key, found));
}

std::optional<CustomisationRules::Change>
CustomisationRules::firstChange(const QString& key, const QHash<QString, PluginInfo*>& records,
                                const QList<PluginInfo*>& inFileOrder) const
{
    const auto isEnabled = [&records](const QString& clsid, bool enabled) {
        const PluginInfo* const info = records.value(clsid);
        return info && info->m_bEnabled == enabled;
    };
    for (const bool enable : {true, false}) {
        const auto changes = [&](const QString&, const QString& clsid) {
            return isEnabled(clsid, !enable);
        };
        if (anyMatch(enable ? m_enableTable : m_disableTable, key, changes))
            return Change{enable, true, {}};
    }

    QSet<QString> enabled = listedUnder(m_enableTable, commonKey());
    const QSet<QString> disabled = listedUnder(m_disableTable, key);
    for (const QString& clsid : qAsConst(enabled))
        if (isEnabled(clsid, false) && !disabled.contains(clsid))
            return Change{true, false, clsid};

    enabled += listedUnder(m_enableTable, key);
    for (const PluginInfo* info : inFileOrder)
        if (info->m_bEnabled && !enabled.contains(info->m_strClsid))
            return Change{false, false, info->m_strClsid};
    return {};
}
