#pragma once

#include <QString>
#include <QVector>

/// One plugin as PluginContainer::GetPluginStatus() reports it: how far it has come and which rule decided.
struct PluginStatus
{
    /// How far the plugin has come.
    enum class State {
        Removed,     ///< taken out for good by the operator's customisation
        Disabled,    ///< known, but may not be loaded
        Enabled,     ///< may be loaded, is not
        Loaded,      ///< its library is loaded
        Initialized, ///< loaded and initialised
    };

    /// The rule that decided last whether the plugin is enabled.
    enum class Rule {
        None,           ///< no rule names it: disabled
        Common,         ///< enabled for everybody
        OperatorAdd,    ///< enabled by the operator's customisation
        OperatorRemove, ///< removed by the operator's customisation
        KeyAdd,         ///< enabled by the rules of `key`
        KeyRemove,      ///< disabled by the rules of `key`
    };

    QString name;
    QString clsid;
    int type = 0;
    State state = State::Disabled;
    Rule rule = Rule::None;
    QString key;   ///< the rule's: operator name or customisation key (modem, "IMSI...", "GID...")
    QString error; ///< why the library did not load the last time; empty when it did or was never tried
};

using PluginStatusList = QVector<PluginStatus>;
