#pragma once

#include "PluginContainer/interfaces/ILayout.h"

/// Arranges pages as tabs: what the main frame falls back on without a layout plugin.
class TabLayout : public ILayout
{
public:
    /// The area belongs to the parent alone.
    QWidget* CreateArea(QWidget* parent) override;
    void AddPage(QWidget* area, QWidget* page) override;
    void RemovePage(QWidget* area, QWidget* page) override;
};
