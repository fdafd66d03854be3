#pragma once

#include "Change/Change.h"

/// Access to Change::m_languageHash. What every look-up does is inline. Hold g_mutex.
namespace TextTable {

/// The plugin of the previous look-up. Most look-ups are for the same plugin again and need not search for it.
///
/// It holds an implicitly shared copy of the table: any change to the table ends the sharing, so
/// isSharedWith() reports whether the position is still valid.
class LastPlugin
{
public:
    bool isValidFor(const QString& plugin) const
    {
        return m_table.isSharedWith(Change::m_languageHash) && m_position != m_table.constEnd() &&
               (m_position.key().constData() == plugin.constData() || m_position.key() == plugin);
    }

    void seek(const QString& plugin);

    QString text(const QString& id) const
    {
        return m_position == m_table.constEnd() ? QString() : m_position->value(id);
    }

private:
    using Table = QHash<QString, QHash<QString, QString>>;

    Table m_table;
    Table::const_iterator m_position = m_table.constEnd();
};

extern LastPlugin lastPlugin;

/// A string of a plugin; empty when the table lacks it. Adds nothing.
inline QString find(const QString& id, const QString& plugin)
{
    if (!lastPlugin.isValidFor(plugin))
        lastPlugin.seek(plugin);
    return lastPlugin.text(id);
}

/// The strings of a plugin, for changing them. A plugin that the table lacks is added without strings.
///
/// The table copies the characters of new keys: those of a literal are gone once its library is unloaded.
QHash<QString, QString>& texts(const QString& plugin);

/// Adds an empty string unless the plugin has one of this identifier.
void addMissing(const QString& id, const QString& plugin);

} // namespace TextTable
