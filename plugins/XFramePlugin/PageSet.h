#pragma once

#include "TabLayout.h"

#include <QHash>
#include <QPointer>
#include <QVector>
#include <QWidget>

class ILayout;
class IPluginContainer;
class MainWindow;

/// The pages of the main window: those of the embedded plugins in the order of the plugin library file, then
/// the window's own. The layout plugin arranges them; without one they are tabs.
///
/// Pages and area may be deleted by their plugins at any time.
class PageSet
{
public:
    /// Both arguments must outlive this object.
    PageSet(IPluginContainer& container, MainWindow& window);

    /// Deletes the pages of plugins that are no longer enabled, and lets go of a layout that is no longer the
    /// one to use. To be called while the libraries of those plugins are still loaded.
    void dropDisabled();

    /// Adds the pages that are missing, each at its place.
    void arrange();

private:
    QWidget* page(const QString& clsid);
    QVector<QWidget*> wantedPages();
    ILayout* wantedLayout();
    void prepareArea();
    void takeOut(QWidget* page);
    void takeOutAllAfter(int kept);

    IPluginContainer& m_container;
    MainWindow& m_window;
    TabLayout m_tabs;
    ILayout* m_layout = nullptr; ///< whose the area is; null without an area
    QPointer<QWidget> m_area;
    QHash<QString, QPointer<QWidget>> m_pages; ///< of the embedded plugins, by clsid
    QVector<QPointer<QWidget>> m_shown;        ///< what the area holds, in order
};
