#pragma once

#include "PluginContainer/PluginStatus.h"

#include <QAbstractTableModel>
#include <QStringList>

/// A table of the plugins: name, state and reason.
class PluginStatusModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { NameColumn, StateColumn, ReasonColumn, ColumnCount };
    enum Role { ToneRole = Qt::UserRole }; ///< of the state: Look::Tone as an int

    using QAbstractTableModel::QAbstractTableModel;

    /// Sets the plugins and looks up their names in the current language.
    void setPlugins(const PluginStatusList& plugins);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    static QString describe(const PluginStatus& plugin, int column);

    PluginStatusList m_plugins;
    QStringList m_names; ///< in the current language; cached, because looking up a missing name reads a file
};
