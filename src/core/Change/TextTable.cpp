#include "Change/TextTable_p.h"

TextTable::LastPlugin TextTable::lastPlugin;

void TextTable::LastPlugin::seek(const QString& plugin)
{
    m_table = Change::m_languageHash;
    m_position = m_table.constFind(plugin);
}

QHash<QString, QString>& TextTable::texts(const QString& plugin)
{
    lastPlugin = {}; // else the change would copy what is shared
    return Change::m_languageHash[plugin];
}
