#include "Change/TextTable.h"

#include "Change/Change.h"

namespace {

using Table = QHash<QString, QHash<QString, QString>>;

/// The plugin that was asked for last: most look-ups are for the same one again and need not search the table
/// for it. Implicit sharing tells whether this is still true: whoever changes the table gets a copy of his own,
/// and the two share their data no longer.
struct LastPlugin
{
    Table table;
    Table::const_iterator position = table.constEnd();

    bool isValidFor(const QString& plugin) const
    {
        return table.isSharedWith(Change::m_languageHash) && position != table.constEnd() &&
               position.key() == plugin;
    }

    void seek(const QString& plugin)
    {
        table = Change::m_languageHash;
        position = table.constFind(plugin);
    }
};

LastPlugin lastPlugin;

} // namespace

QString TextTable::find(const QString& id, const QString& plugin)
{
    if (!lastPlugin.isValidFor(plugin))
        lastPlugin.seek(plugin);
    return lastPlugin.position == lastPlugin.table.constEnd() ? QString() : lastPlugin.position->value(id);
}

QHash<QString, QString>& TextTable::texts(const QString& plugin)
{
    lastPlugin = {}; // else the change would copy what is shared
    return Change::m_languageHash[plugin];
}
