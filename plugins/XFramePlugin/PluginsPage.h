#pragma once

#include "support/Page.h"

class PluginStatusModel;
class QTableView;

/// The main window's own page: every plugin with its state and the reason for it.
class PluginsPage : public Page
{
    Q_OBJECT

public:
    explicit PluginsPage(QWidget* parent);

    /// Reads the states anew. Also happens whenever the page comes into view.
    void refresh();

protected:
    void showEvent(QShowEvent* event) override;

private:
    QTableView* makeTable();

    PluginStatusModel* m_model;
};
