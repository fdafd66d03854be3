#include "PluginStatusModel.h"

#include "Change/Change.h"
#include "PluginStatusText.h"
#include "support/Text.h"

namespace {

constexpr const char* ColumnTitles[] = {"IDS_COLUMN_PLUGIN", "IDS_COLUMN_STATE", "IDS_COLUMN_WHY"};

/// The name that a plugin's language file gives it; else the one in the plugin library file.
QString nameOf(const PluginStatus& plugin)
{
    // Change may keep the identifier: it must not point into this library.
    const QString name = Change::tr(QString::fromLatin1("IDS_PLUGIN_NAME"), plugin.name);
    return name.isEmpty() ? plugin.name : name;
}

} // namespace

void PluginStatusModel::setPlugins(const PluginStatusList& plugins)
{
    beginResetModel();
    m_plugins = plugins;
    m_names.clear();
    for (const PluginStatus& plugin : plugins)
        m_names.append(nameOf(plugin));
    endResetModel();
}

int PluginStatusModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_plugins.size();
}

int PluginStatusModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

QVariant PluginStatusModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const PluginStatus& plugin = m_plugins.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return index.column() == NameColumn ? m_names.at(index.row()) : describe(plugin, index.column());
    case Qt::ToolTipRole:
        return index.column() == ReasonColumn ? describeDetails(plugin) : describe(plugin, index.column());
    case ToneRole:
        return int(toneOfState(plugin));
    default:
        return {};
    }
}

QVariant PluginStatusModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= ColumnCount)
        return {};
    if (role == Qt::TextAlignmentRole)
        return int(Qt::AlignLeft | Qt::AlignVCenter);
    return role == Qt::DisplayRole ? text(ColumnTitles[section]) : QVariant();
}

QString PluginStatusModel::describe(const PluginStatus& plugin, int column)
{
    switch (column) {
    case NameColumn:
        return plugin.name + QLatin1Char('\n') + plugin.clsid;
    case StateColumn:
        return describeState(plugin);
    default:
        return describeReason(plugin);
    }
}
