#include "PluginContainer/PluginDecisions_p.h"

#include "PluginContainer/CustomisationRules_p.h"
#include "PluginContainer/PluginInfo.h"

PluginStatus PluginDecisions::statusOf(const PluginInfo& info)
{
    PluginStatus status;
    status.name = info.m_strName;
    status.clsid = info.m_strClsid;
    status.type = info.m_iType;
    status.url = info.m_strUrl;
    return status;
}

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

qint64 PluginDecisions::lineOf(const QString& clsid, const RuleLines& lines) const
{
    const Decision made = decision(clsid);
    const bool isByKey =
        made.rule == PluginStatus::Rule::KeyAdd || made.rule == PluginStatus::Rule::KeyRemove;
    const QString key = isByKey ? made.key : CustomisationRules::commonKey();
    const auto found = lines.find({made.rule != PluginStatus::Rule::KeyRemove, key, clsid});
    return found == lines.end() || made.rule == PluginStatus::Rule::None ? 0 : found->second;
}
