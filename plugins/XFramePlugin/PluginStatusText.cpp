#include "PluginStatusText.h"

#include "PluginContainer/CustomisationKeys.h"
#include "common/CommonUtils.h"
#include "support/Text.h"

#include <QDir>

#include <algorithm>
#include <iterator>

namespace {

using Look::Tone;
using Fault = PluginStatus::Fault;
using Rule = PluginStatus::Rule;
using State = PluginStatus::State;

struct StateView
{
    State state;
    const char* word; ///< identifier of its string
    Tone tone;
};

constexpr StateView StateViews[] = {
    {State::Removed, "IDS_STATE_REMOVED", Tone::Quiet},    {State::Disabled, "IDS_STATE_OFF", Tone::Quiet},
    {State::Enabled, "IDS_STATE_ON_DEMAND", Tone::Info},   {State::Loaded, "IDS_STATE_LOADED", Tone::Info},
    {State::Initialized, "IDS_STATE_RUNNING", Tone::Good},
};
constexpr StateView FailedView{State::Enabled, "IDS_STATE_FAILED", Tone::Bad};

/// The string that explains a rule or a fault.
template <typename Cause>
struct Explanation
{
    Cause cause;
    const char* pattern; ///< identifier of the string; %1 is the operator, the key or the library
};

constexpr Explanation<Rule> RuleTexts[] = {
    {Rule::None, "IDS_RULE_NONE"},
    {Rule::Common, "IDS_RULE_COMMON"},
    {Rule::OperatorAdd, "IDS_RULE_OPERATOR_ADD"},
    {Rule::OperatorRemove, "IDS_RULE_OPERATOR_REMOVE"},
    {Rule::KeyAdd, "IDS_RULE_KEY_ADD"},
    {Rule::KeyRemove, "IDS_RULE_KEY_REMOVE"},
};

constexpr Explanation<Fault> FaultTexts[] = {
    {Fault::NoLibrary, "IDS_FAULT_NO_LIBRARY"},    {Fault::OtherPlatform, "IDS_FAULT_OTHER_PLATFORM"},
    {Fault::NotAPlugin, "IDS_FAULT_NOT_A_PLUGIN"}, {Fault::NotLoadable, "IDS_FAULT_NOT_LOADABLE"},
    {Fault::ConstructorThrew, "IDS_FAULT_THREW"},  {Fault::NoBaseInterface, "IDS_FAULT_NOT_A_PLUGIN"},
    {Fault::InitThrew, "IDS_FAULT_THREW"},
};

template <typename Cause, std::size_t Size>
QString explain(const Explanation<Cause> (&explanations)[Size], Cause cause, const QString& argument)
{
    const auto matches = [cause](const Explanation<Cause>& candidate) {
        return candidate.cause == cause;
    };
    const auto found = std::find_if(std::begin(explanations), std::end(explanations), matches);
    const QString pattern = found == std::end(explanations) ? QString() : text(found->pattern);
    return pattern.contains(QLatin1String("%1")) ? pattern.arg(argument) : pattern;
}

constexpr int NetworkDigits = 6; // of an IMSI; the rest identifies the subscriber and is not shown

/// A fault is of no interest while the plugin is not to be loaded.
bool hasFailed(const PluginStatus& status)
{
    return status.fault != Fault::None && status.state != State::Removed && status.state != State::Disabled;
}

const StateView& viewOf(const PluginStatus& status)
{
    if (hasFailed(status))
        return FailedView;
    const auto matches = [&status](const StateView& view) {
        return view.state == status.state;
    };
    const auto view = std::find_if(std::begin(StateViews), std::end(StateViews), matches);
    return view == std::end(StateViews) ? FailedView : *view;
}

QString describeSim(const QString& digits)
{
    return text("IDS_KEY_SIM").arg(digits.left(NetworkDigits));
}

/// A path relative to the installation.
QString installed(const QString& path)
{
    return QDir(CommonUtils::GetPluginLibraryPath()).relativeFilePath(path);
}

QString placeOfRule(const PluginStatus& status)
{
    return text("IDS_DETAIL_RULE").arg(installed(status.ruleFile)).arg(status.ruleLine);
}

/// What Init() throws is not about a file; all that is known then is the exception's text.
QString describeFailure(const PluginStatus& status)
{
    if (status.wanted.isEmpty())
        return status.error.isEmpty() ? describeReason(status) : status.error;
    const QStringList lines = {text("IDS_DETAIL_FILE").arg(QDir::toNativeSeparators(status.library)),
                               text("IDS_DETAIL_WANTED").arg(status.wanted),
                               text("IDS_DETAIL_FOUND").arg(status.found)};
    return lines.join(QLatin1Char('\n'));
}

} // namespace

QString describeState(const PluginStatus& status)
{
    return text(viewOf(status).word);
}

Look::Tone toneOfState(const PluginStatus& status)
{
    return viewOf(status).tone;
}

QString describeReason(const PluginStatus& status)
{
    if (hasFailed(status))
        return explain(FaultTexts, status.fault, status.url);
    const bool byKey = status.rule == Rule::KeyAdd || status.rule == Rule::KeyRemove;
    return explain(RuleTexts, status.rule, byKey ? describeKey(status.key) : status.key);
}

QString describeDetails(const PluginStatus& status)
{
    if (hasFailed(status))
        return describeFailure(status);
    const QString reason = describeReason(status);
    return status.ruleFile.isEmpty() ? reason : reason + QLatin1Char('\n') + placeOfRule(status);
}

QString describeFault(const ConfigurationFault& fault)
{
    const QString file = installed(fault.path);
    switch (fault.kind) {
    case ConfigurationFault::Kind::Missing:
        return text("IDS_CONFIG_MISSING").arg(file);
    case ConfigurationFault::Kind::Unreadable:
        return text("IDS_CONFIG_UNREADABLE").arg(file);
    case ConfigurationFault::Kind::Malformed:
        break;
    }
    return text("IDS_CONFIG_MALFORMED").arg(file).arg(fault.line);
}

QString describeKey(const QString& key)
{
    if (key.startsWith(CustomisationKeys::Imsi))
        return describeSim(key.mid(CustomisationKeys::Imsi.size()));
    if (key.startsWith(CustomisationKeys::Gid))
        return text("IDS_KEY_GROUP").arg(key.mid(CustomisationKeys::Gid.size()));
    return text("IDS_KEY_MODEM").arg(key);
}

QString keyInWords(const QString& key)
{
    return key.isEmpty() ? text("IDS_INSTALLATION_NO_KEY") : describeKey(key);
}

QString operatorInWords()
{
    const QString name = CommonUtils::GetSettings(QLatin1String("customize"), QLatin1String("operator"));
    return name.isEmpty() ? text("IDS_INSTALLATION_NO_OPERATOR") : name;
}
