#pragma once

#include "PluginContainer/PluginLibrary_p.h"

#include <QHash>
#include <QSet>

#include <map>
#include <tuple>
#include <vector>

class PluginInfo;

/// Records which rule enabled or disabled each plugin and what went wrong with it, for
/// PluginContainer::GetPluginStatus().
class PluginDecisions
{
public:
    /// What a plugin's record says by itself; everything else has its default.
    static PluginStatus statusOf(const PluginInfo& info);

    struct Decision
    {
        PluginStatus::Rule rule = PluginStatus::Rule::None;
        QString key;
    };

    /// Lines of the plugin configuration file by the rules in them: whether the rule enables, its key in the
    /// container's tables, and the plugin's clsid.
    using Rule = std::tuple<bool, QString, QString>;
    using RuleLines = std::map<Rule, qint64>;

    /// A rule was read at this line. Only collects: there may be many rules, and few are ever asked for.
    void noteRule(bool isEnabling, const QString& key, const QString& clsid, qint64 line)
    {
        m_rules.emplace_back(Rule(isEnabling, key, clsid), line);
    }

    /// The lines of all rules; of several equal rules that of the first.
    RuleLines ruleLines() const { return {m_rules.begin(), m_rules.end()}; }

    /// The line of the rule that decided about a plugin; 0 if no rule did.
    qint64 lineOf(const QString& clsid, const RuleLines& lines) const;

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
    std::vector<std::pair<Rule, qint64>> m_rules;
};
