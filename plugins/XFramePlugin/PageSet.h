#pragma once

#include "TabLayout.h"
#include "UnreadCount.h"

#include <QHash>
#include <QPointer>
#include <QVector>
#include <QWidget>

class ILayout;
class IPluginContainer;
class MainWindow;

/// The pages of the main window: those of the embedded plugins in the order of the plugin library file; if
/// there are none, the window's own. The layout plugin arranges them. Without one, or after it has thrown an exception, they
/// are tabs. A page that cannot be built is left out.
///
/// Pages and area may be deleted by their plugins at any time.
class PageSet
{
public:
    /// Both arguments must outlive this object.
    PageSet(IPluginContainer& container, MainWindow& window);

    /// Deletes the pages of plugins that are no longer enabled, and the area of a layout that is no longer
    /// used. Call this while the libraries of those plugins are still loaded.
    void dropDisabled();

    /// Adds missing pages in their places.
    void arrange();

    /// Makes the page of a plugin the current one.
    /// @return false if the plugin has none
    bool show(const QString& clsid);

private:
    QVector<QWidget*> wantedPages();
    ILayout* wantedLayout();
    void prepareArea();
    void dropArea();
    void add(const QVector<QWidget*>& pages);
    void takeOut(QWidget* page);
    void takeOutAllAfter(int kept);

    /// Runs a call into the layout.
    /// @return false when it threw; the layout is then not used again
    template <typename Call>
    bool callLayout(const char* what, Call call);

    IPluginContainer& m_container;
    MainWindow& m_window;
    TabLayout m_tabs;
    ILayout* m_layout = nullptr;       ///< made the area; null without an area
    ILayout* m_faultyLayout = nullptr; ///< only compared with, as its plugin may have been unloaded
    QPointer<QWidget> m_area;
    QHash<QString, QPointer<QWidget>> m_pages; ///< of the embedded plugins, by clsid
    QVector<QPointer<QWidget>> m_shown;        ///< pages in the area, in order
    UnreadCount m_unread;
};
