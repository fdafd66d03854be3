#pragma once

#include "PluginContainer/ConfigurationFault.h"
#include "support/Page.h"

class PluginStatusModel;
class QLabel;
class QTableView;

/// The page of the main window itself: all plugins with their state and the reason for it, and the faults of
/// the configuration files.
class PluginsPage : public Page
{
    Q_OBJECT

public:
    explicit PluginsPage(QWidget* parent);

    /// Updates the states. Also happens whenever the page becomes visible.
    void refresh();

protected:
    void showEvent(QShowEvent* event) override;

private:
    QTableView* makeTable();
    void showFaults(const ConfigurationFaultList& faults);

    QLabel* m_faults;
    PluginStatusModel* m_model;
};
