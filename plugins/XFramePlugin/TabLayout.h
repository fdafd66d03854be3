#pragma once

#include "PluginContainer/interfaces/ILayout.h"

/// Arranges pages as tabs. Used when there is no layout plugin.
class TabLayout : public ILayout
{
public:
    /// The parent owns the area.
    QWidget* CreateArea(QWidget* parent) override;
    void AddPage(QWidget* area, QWidget* page) override;
    void RemovePage(QWidget* area, QWidget* page) override;
    void ShowPage(QWidget* area, QWidget* page) override;
};
