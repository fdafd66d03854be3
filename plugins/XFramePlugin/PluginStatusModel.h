#pragma once

#include "PluginContainer/PluginStatus.h"

#include <QAbstractTableModel>

/// The plugins as a table: name, state and reason.
class PluginStatusModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { NameColumn, StateColumn, ReasonColumn, ColumnCount };
    enum Role { ToneRole = Qt::UserRole }; ///< of the state: Look::Tone as an int

    using QAbstractTableModel::QAbstractTableModel;

    void setPlugins(const PluginStatusList& plugins);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QString textAt(const PluginStatus& plugin, int column) const;

    PluginStatusList m_plugins;
};
