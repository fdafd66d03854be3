#include "PluginContainer/PluginDecisions_p.h"

void PluginDecisions::noteCommon(const QString& clsid, const QString& operatorName)
{
    if (m_operatorAdded.contains(clsid))
        m_decisions.insert(clsid, {PluginStatus::Rule::OperatorAdd, operatorName});
    else
        m_decisions.insert(clsid, {PluginStatus::Rule::Common, {}});
}

void PluginDecisions::noteKey(const QString& clsid, const QString& key, bool enable)
{
    m_decisions.insert(clsid, {enable ? PluginStatus::Rule::KeyAdd : PluginStatus::Rule::KeyRemove, key});
}
