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
    const char16_t* word;
    Tone tone;
};

constexpr StateView stateViews[] = {
    {State::Removed, u"Removed", Tone::Quiet},    {State::Disabled, u"Off", Tone::Quiet},
    {State::Enabled, u"On demand", Tone::Info},   {State::Loaded, u"Loaded", Tone::Info},
    {State::Initialized, u"Running", Tone::Good},
};
constexpr StateView failedView{State::Enabled, u"Failed", Tone::Bad};

struct RuleText
{
    Rule rule;
    const char16_t* pattern; ///< %1 is the operator or the key
};

constexpr RuleText ruleTexts[] = {
    {Rule::None, u"Not asked for by any rule"},
    {Rule::Common, u"Enabled for everybody"},
    {Rule::OperatorAdd, u"Added by operator %1"},
    {Rule::OperatorRemove, u"Removed by operator %1"},
    {Rule::KeyAdd, u"Added for %1"},
    {Rule::KeyRemove, u"Turned off for %1"},
};

namespace Texts {
constexpr auto Modem = u"modem %1";
constexpr auto SimsBeginningWith = u"SIM %1\u2026";
constexpr auto SimGroup = u"SIM group %1";
} // namespace Texts

constexpr QLatin1String ImsiPrefix("IMSI");
constexpr QLatin1String GidPrefix("GID");
constexpr int NetworkDigits = 6; // of an IMSI; the rest is the subscriber's own business

const StateView& viewOf(const PluginStatus& status)
{
    if (!status.error.isEmpty() && status.state == State::Enabled)
        return failedView;
    const auto matches = [&status](const StateView& view) {
        return view.state == status.state;
    };
    const auto view = std::find_if(std::begin(stateViews), std::end(stateViews), matches);
    return view == std::end(stateViews) ? failedView : *view;
}

QString describeSim(const QString& digits)
{
    return text(Texts::SimsBeginningWith).arg(digits.left(NetworkDigits));
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
    if (&viewOf(status) == &failedView)
        return status.error;
    const auto matches = [&status](const RuleText& candidate) {
        return candidate.rule == status.rule;
    };
    const auto found = std::find_if(std::begin(ruleTexts), std::end(ruleTexts), matches);
    const QString pattern = found == std::end(ruleTexts) ? QString() : text(found->pattern);
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
        return text(Texts::SimGroup).arg(key.mid(GidPrefix.size()));
    return text(Texts::Modem).arg(key);
}
