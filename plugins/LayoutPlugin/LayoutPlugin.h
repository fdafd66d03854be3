#pragma once

#include "PluginContainer/BasePlugin.h"
#include "PluginContainer/interfaces/ILayout.h"

#include <QPointer>
#include <QVector>
#include <QWidget>

/// Arranges the pages of the main window next to a side bar with their icons and titles.
class LayoutPlugin : public BasePlugin, public ILayout
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.velquor.skylume.plugin.IBasePlugin")
    Q_INTERFACES(ILayout)

public:
    LayoutPlugin();

    void Destroy() override;

    QWidget* CreateArea(QWidget* parent) override;
    void AddPage(QWidget* area, QWidget* page) override;

    /// If the current page is removed, the first page becomes the current one. If the page is then added again, also after
    /// its plugin was unloaded, it becomes the current page again unless the user has chosen another in the meantime.
    void RemovePage(QWidget* area, QWidget* page) override;
    void ShowPage(QWidget* area, QWidget* page) override;

private:
    QVector<QPointer<QWidget>> m_areas;
};
