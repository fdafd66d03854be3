#pragma once

#include "Change/Change.h"

/// The ways into Change::m_languageHash; what every look-up does is inline. Hold g_mutex.
namespace TextTable {

/// The plugin that was asked for last: most look-ups are for the same one again and need not search the table
/// for it. Implicit sharing tells whether this is still true: whoever changes the table gets a copy of his
/// own, and the two share their data no longer.
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

/// A text of a plugin; empty when it is not there. Adds nothing.
inline QString find(const QString& id, const QString& plugin)
{
    if (!lastPlugin.isValidFor(plugin))
        lastPlugin.seek(plugin);
    return lastPlugin.text(id);
}

/// The texts of a plugin, to be changed; added without any when the table lacks the plugin.
QHash<QString, QString>& texts(const QString& plugin);

} // namespace TextTable
