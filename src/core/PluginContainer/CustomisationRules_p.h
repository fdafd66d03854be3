#pragma once

#include "PluginContainer/CustomisationKeys.h"

#include <QHash>
#include <QList>
#include <QString>

#include <optional>

class PluginInfo;

/// The rules of the plugin configuration file: which plugins each customisation key enables and disables.
/// A view of the container's two tables, which must outlive it.
class CustomisationRules
{
public:
    using Table = QHash<QString, QString>; ///< key to clsid, several per key

    /// The key of the rules for everyone and for the operator.
    static QString commonKey() { return QStringLiteral("common"); }

    /// What applying a key would change.
    struct Change
    {
        bool isEnabling;
        bool isByKey;  ///< a rule of the key itself does it, not the common rules
        QString clsid; ///< of the plugin; empty when isByKey
    };

    CustomisationRules(const Table& enableTable, const Table& disableTable)
        : m_enableTable(enableTable)
        , m_disableTable(disableTable)
    {
    }

    /// Calls visit(ruleKey, clsid) for each rule of a table that applies to `key`, until it returns true. A
    /// rule applies to its own key, and to every IMSI key that contains its key: so the rules of all
    /// configured prefixes of an IMSI apply.
    /// @return whether a call returned true
    template <typename Visit>
    static bool anyMatch(const Table& table, const QString& key, Visit visit);

    /// Whether some rule applies to `key`.
    bool hasRulesFor(const QString& key) const;

    /// The first plugin whose state applying `key` would change, if there is one. Unlike applying, the
    /// comparison with the common rules ignores rules of IMSI prefixes: right after the rules of a prefix
    /// were applied it may still find a change.
    /// @param records     by clsid, with their present state
    /// @param inFileOrder the same records
    std::optional<Change> firstChange(const QString& key, const QHash<QString, PluginInfo*>& records,
                                      const QList<PluginInfo*>& inFileOrder) const;

private:
    const Table& m_enableTable;
    const Table& m_disableTable;
};

template <typename Visit>
bool CustomisationRules::anyMatch(const Table& table, const QString& key, Visit visit)
{
    if (!key.startsWith(CustomisationKeys::Imsi)) {
        for (auto rule = table.constFind(key); rule != table.constEnd() && rule.key() == key; ++rule)
            if (visit(rule.key(), rule.value()))
                return true;
        return false;
    }
    for (auto rule = table.constBegin(); rule != table.constEnd(); ++rule)
        if (key.contains(rule.key()) && visit(rule.key(), rule.value()))
            return true;
    return false;
}
