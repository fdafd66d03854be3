#pragma once

#include "PluginContainer/PluginLibrary_p.h"

#include <QHash>
#include <QSet>

/// Records which rule enabled or disabled each plugin and what went wrong with it, for
/// PluginContainer::GetPluginStatus().
class PluginDecisions
{
public:
    struct Decision
    {
        PluginStatus::Rule rule = PluginStatus::Rule::None;
        QString key;
    };

    /// The operator's customisation adds this plugin to the common set.
    void noteOperatorAdd(const QString& clsid) { m_operatorAdded.insert(clsid); }

    /// The operator's customisation removes this plugin permanently.
    void noteOperatorRemove(const PluginStatus& plugin) { m_removed.append(plugin); }

    void noteCommon(const QString& clsid, const QString& operatorName);
    void noteKey(const QString& clsid, const QString& key, bool enable);
    void noteFault(const QString& clsid, const PluginFault& fault) { m_faults.insert(clsid, fault); }

    /// Forgets the decisions, but not removals and faults: all plugins are disabled again.
    void reset() { m_decisions.clear(); }

    Decision decision(const QString& clsid) const { return m_decisions.value(clsid); }
    PluginFault fault(const QString& clsid) const { return m_faults.value(clsid); }
    const PluginStatusList& removed() const { return m_removed; }

private:
    QHash<QString, Decision> m_decisions;
    QHash<QString, PluginFault> m_faults;
    QSet<QString> m_operatorAdded;
    PluginStatusList m_removed;
};
