#pragma once

#include <QHash>
#include <QString>

/// The ways into Change::m_languageHash. Hold g_mutex.
namespace TextTable {

/// A text of a plugin; empty when it is not there. Adds nothing.
QString find(const QString& id, const QString& plugin);

/// The texts of a plugin, to be changed; added without any when the table lacks the plugin.
QHash<QString, QString>& texts(const QString& plugin);

} // namespace TextTable
