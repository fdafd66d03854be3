#include "PluginStatusText.h"

#include "support/Text.h"

#include <algorithm>
#include <iterator>

namespace {

using Look::Tone;
using Rule = PluginStatus::Rule;
using State = PluginStatus::State;

struct StateView
{
    State state;
    const char* word; ///< identifier of its text
    Tone tone;
};

constexpr StateView StateViews[] = {
    {State::Removed, "IDS_STATE_REMOVED", Tone::Quiet},    {State::Disabled, "IDS_STATE_OFF", Tone::Quiet},
    {State::Enabled, "IDS_STATE_ON_DEMAND", Tone::Info},   {State::Loaded, "IDS_STATE_LOADED", Tone::Info},
    {State::Initialized, "IDS_STATE_RUNNING", Tone::Good},
};
constexpr StateView FailedView{State::Enabled, "IDS_STATE_FAILED", Tone::Bad};

struct RuleText
{
    Rule rule;
    const char* pattern; ///< identifier of a text in which %1 is the operator or the key
};

constexpr RuleText RuleTexts[] = {
    {Rule::None, "IDS_RULE_NONE"},
    {Rule::Common, "IDS_RULE_COMMON"},
    {Rule::OperatorAdd, "IDS_RULE_OPERATOR_ADD"},
    {Rule::OperatorRemove, "IDS_RULE_OPERATOR_REMOVE"},
    {Rule::KeyAdd, "IDS_RULE_KEY_ADD"},
    {Rule::KeyRemove, "IDS_RULE_KEY_REMOVE"},
};

constexpr QLatin1String ImsiPrefix("IMSI");
constexpr QLatin1String GidPrefix("GID");
constexpr int NetworkDigits = 6; // of an IMSI; the rest is the subscriber's own business

const StateView& viewOf(const PluginStatus& status)
{
    if (!status.error.isEmpty() && status.state == State::Enabled)
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
    if (&viewOf(status) == &FailedView)
        return status.error;
    const auto matches = [&status](const RuleText& candidate) {
        return candidate.rule == status.rule;
    };
    const auto found = std::find_if(std::begin(RuleTexts), std::end(RuleTexts), matches);
    const QString pattern = found == std::end(RuleTexts) ? QString() : text(found->pattern);
    if (!pattern.contains(QLatin1String("%1")))
        return pattern;
    const bool byKey = status.rule == Rule::KeyAdd || status.rule == Rule::KeyRemove;
    return pattern.arg(byKey ? describeKey(status.key) : status.key);
}

QString describeKey(const QString& key)
{
    if (key.startsWith(ImsiPrefix))
        return describeSim(key.mid(ImsiPrefix.size()));
    if (key.startsWith(GidPrefix))
        return text("IDS_KEY_GROUP").arg(key.mid(GidPrefix.size()));
    return text("IDS_KEY_MODEM").arg(key);
}
