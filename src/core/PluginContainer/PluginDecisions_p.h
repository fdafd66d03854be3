#pragma once

#include "PluginContainer/PluginStatus.h"

#include <QHash>
#include <QSet>

/// Remembers which rule decided on each plugin, so that the plugin set can be explained. Changes nothing
/// itself.
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

    /// The operator's customisation takes this plugin out for good.
    void noteOperatorRemove(const PluginStatus& plugin) { m_removed.append(plugin); }

    void noteCommon(const QString& clsid, const QString& operatorName);
    void noteKey(const QString& clsid, const QString& key, bool enable);
    void noteLoadError(const QString& clsid, const QString& error) { m_loadErrors.insert(clsid, error); }
    void forgetLoadError(const QString& clsid) { m_loadErrors.remove(clsid); }

    /// Forgets the decisions, not the removals: all plugins are disabled again.
    void reset() { m_decisions.clear(); }

    Decision decision(const QString& clsid) const { return m_decisions.value(clsid); }
    QString loadError(const QString& clsid) const { return m_loadErrors.value(clsid); }
    const PluginStatusList& removed() const { return m_removed; }

private:
    QHash<QString, Decision> m_decisions;
    QHash<QString, QString> m_loadErrors;
    QSet<QString> m_operatorAdded;
    PluginStatusList m_removed;
};
