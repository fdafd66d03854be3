#include "PluginStatusModel.h"

#include "PluginStatusText.h"
#include "support/Text.h"

static constexpr const char16_t* ColumnTitles[] = {u"Plugin", u"State", u"Why"};

void PluginStatusModel::setPlugins(const PluginStatusList& plugins)
{
    beginResetModel();
    m_plugins = plugins;
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
        return textAt(plugin, index.column());
    case Qt::ToolTipRole:
        return index.column() == NameColumn ? plugin.clsid : textAt(plugin, index.column());
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

QString PluginStatusModel::textAt(const PluginStatus& plugin, int column) const
{
    switch (column) {
    case NameColumn:
        return plugin.name;
    case StateColumn:
        return describeState(plugin);
    default:
        return describeReason(plugin);
    }
}
