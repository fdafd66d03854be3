#pragma once

#include "PluginContainer/ConfigurationFault.h"

#include <QWidget>

class PluginStatusModel;
class QLabel;
class QTableView;

/// All plugins with their state and the reason for it, and the faults of the configuration files.
class PluginsView : public QWidget
{
    Q_OBJECT

public:
    explicit PluginsView(QWidget* parent = nullptr);

    /// Updates the states. Also happens whenever the view becomes visible.
    void refresh();

protected:
    void showEvent(QShowEvent* event) override;

private:
    QTableView* makeTable();
    void showFaults(const ConfigurationFaultList& faults);

    QLabel* m_faults;
    PluginStatusModel* m_model;
};
