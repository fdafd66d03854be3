#include "Change/TextTable_p.h"

namespace {

/// The value of a key, added when it is missing.
template <typename Value>
Value& valueOf(QHash<QString, Value>& table, const QString& key)
{
    const auto found = table.find(key);
    return found == table.end() ? *table.insert(QString(key.constData(), key.size()), Value()) : *found;
}

} // namespace

TextTable::LastPlugin TextTable::lastPlugin;

void TextTable::LastPlugin::seek(const QString& plugin)
{
    m_table = Change::m_languageHash;
    m_position = m_table.constFind(plugin);
}

QHash<QString, QString>& TextTable::texts(const QString& plugin)
{
    lastPlugin = {}; // while it shares the table, changing the table would copy it
    return valueOf(Change::m_languageHash, plugin);
}

void TextTable::addMissing(const QString& id, const QString& plugin)
{
    valueOf(texts(plugin), id);
}
