#pragma once

#include <QString>
#include <QVector>

/// One plugin as PluginContainer::GetPluginStatus() reports it: its state, and the rule that enabled or
/// disabled it.
struct PluginStatus
{
    /// How far the plugin has come.
    enum class State {
        Removed,     ///< permanently removed by the operator's customisation
        Disabled,    ///< known, but must not be loaded
        Enabled,     ///< may be loaded, but is not
        Loaded,      ///< its library is loaded
        Initialized, ///< loaded, and Init() has been called and has not thrown
    };

    /// The last rule that enabled or disabled the plugin.
    enum class Rule {
        None,           ///< no rule names it: disabled
        Common,         ///< enabled for everyone
        OperatorAdd,    ///< enabled by the operator's customisation
        OperatorRemove, ///< removed by the operator's customisation
        KeyAdd,         ///< enabled by the rules of `key`
        KeyRemove,      ///< disabled by the rules of `key`
    };

    /// What went wrong at the last attempt to load or initialise the plugin. With the last two the library is
    /// nevertheless loaded.
    enum class Fault {
        None,             ///< nothing, or the plugin has not been loaded yet
        NoLibrary,        ///< the plugin folder has no library whose name begins with `url`
        OtherPlatform,    ///< the library is built for another processor or operating system
        NotAPlugin,       ///< the file is damaged or is not a Qt plugin
        NotLoadable,      ///< a library or a symbol that it needs is missing, or it needs another Qt version
        ConstructorThrew, ///< the constructor of the plugin's root object threw an exception
        NoBaseInterface,  ///< the root object does not implement IBasePlugin
        InitThrew,        ///< Init() threw an exception
    };

    QString name;
    QString clsid;
    int type = 0;
    State state = State::Disabled;
    Rule rule = Rule::None;
    QString key; ///< what `rule` belongs to: operator name or customisation key (modem, "IMSI...", "GID...")
    Fault fault = Fault::None;
    QString url;   ///< base name of the library file
    QString error; ///< Qt's or the exception's own text for `fault`, not translated; may be empty

    // Where to look; not translated, and empty where they do not apply.
    QString library;     ///< path of the library that `fault` is about
    QString wanted;      ///< with a fault: what the application needs
    QString found;       ///< with a fault: what is there instead
    QString ruleFile;    ///< path of the file that `rule` is in
    qint64 ruleLine = 0; ///< line of `rule`, from 1; of several equal rules the first
};

using PluginStatusList = QVector<PluginStatus>;
