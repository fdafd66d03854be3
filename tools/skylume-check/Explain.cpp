#include "Explain.h"

#include "Findings.h"
#include "Installation.h"
#include "PluginContainer/CustomisationKeys.h"
#include "PluginContainer/PluginInspection.h"
#include "PluginFaults.h"
#include "support/TextTable.h"
#include "support/Tool.h"

#include <algorithm>
#include <cstdio>
#include <iterator>

namespace {

using State = PluginStatus::State;
using Rule = PluginStatus::Rule;

struct RuleText
{
    Rule rule;
    const char* text; ///< %1 is the operator or the key
};

constexpr RuleText RuleTexts[] = {
    {Rule::None, "no rule enables it"},
    {Rule::Common, "enabled for everyone"},
    {Rule::OperatorAdd, "added by the operator %1"},
    {Rule::OperatorRemove, "removed by the operator %1"},
    {Rule::KeyAdd, "added for %1"},
    {Rule::KeyRemove, "turned off for %1"},
};

bool isOn(const PluginStatus& plugin)
{
    return plugin.state > State::Disabled;
}

QString stateOf(const PluginStatus& plugin)
{
    if (plugin.state == State::Removed)
        return QStringLiteral("removed");
    return isOn(plugin) ? QStringLiteral("on") : QStringLiteral("off");
}

/// The meaning of a customisation key, which is not empty.
QString describeKey(const QString& key)
{
    if (key.startsWith(CustomisationKeys::Imsi))
        return QStringLiteral("SIM ") + key.mid(CustomisationKeys::Imsi.size());
    if (key.startsWith(CustomisationKeys::Gid))
        return QStringLiteral("group ") + key.mid(CustomisationKeys::Gid.size());
    return QStringLiteral("modem ") + key;
}

QString reasonOf(const PluginStatus& plugin)
{
    const auto* const found = std::find_if(std::begin(RuleTexts), std::end(RuleTexts),
                                           [&](const RuleText& text) { return text.rule == plugin.rule; });
    const QString text = QLatin1String(found->text);
    const bool isByKey = plugin.rule == Rule::KeyAdd || plugin.rule == Rule::KeyRemove;
    return text.contains(QLatin1String("%1")) ? text.arg(isByKey ? describeKey(plugin.key) : plugin.key)
                                              : text;
}

QString placeOf(const PluginStatus& plugin)
{
    return plugin.ruleFile.isEmpty() ? QString()
                                     : QStringLiteral("%1:%2").arg(plugin.ruleFile).arg(plugin.ruleLine);
}

QString tableOf(const PluginStatusList& plugins)
{
    QVector<QStringList> rows = {
        {QStringLiteral("PLUGIN"), QStringLiteral("STATE"), QStringLiteral("WHY"), QStringLiteral("RULE")}};
    for (const PluginStatus& plugin : plugins)
        rows.append({plugin.name, stateOf(plugin), reasonOf(plugin), placeOf(plugin)});
    return textTable(rows);
}

void print(const QString& text)
{
    std::fputs(text.toLocal8Bit().constData(), stdout);
}

} // namespace

int explain(const QString& folder, const Situation& situation)
{
    const Installation installation(folder);
    const QString operatorName =
        situation.operatorName.isNull() ? installation.operatorName() : situation.operatorName;
    PluginInspection inspection(installation.folder(), operatorName);
    const QString key = inspection.KeyForModem(situation.device, situation.imsi, situation.gid);
    inspection.ApplyCustomizationForDevice(key);
    inspection.tryLibraries();
    print(QStringLiteral("Operator: %1\nRules of: %2\n\n")
              .arg(operatorName.isEmpty() ? QStringLiteral("none") : operatorName,
                   key.isEmpty() ? QStringLiteral("everyone and the operator only") : describeKey(key)));
    print(tableOf(inspection.GetPluginStatus()));
    std::fflush(stdout);
    Findings findings;
    addFileFaults(inspection, true, findings);
    addLibraryFaults(inspection, installation, isOn, findings);
    return Tool::report(findings.faults());
}
