#pragma once

#include "skylume_global.h"

#include <QtPlugin>

class QWidget;

/// The layout plugin, available as PluginIds::FirstService: arranges the pages of the main window. Operators
/// replace it to change the look of the application. GUI thread only.
class SKYLUME_EXPORT ILayout
{
public:
    virtual ~ILayout();

    /// Creates an empty area for pages.
    /// @param parent parent and owner of the area; the layout plugin deletes it in Destroy() if it still
    ///         exists
    virtual QWidget* CreateArea(QWidget* parent) = 0;

    /// Adds a page at the end of an area made by CreateArea(); title and icon are the page's window title and
    /// window icon. The area becomes the page's parent.
    virtual void AddPage(QWidget* area, QWidget* page) = 0;

    /// Removes a page from an area; the caller deletes it. A page that is not in the area is ignored.
    virtual void RemovePage(QWidget* area, QWidget* page) = 0;

    /// Makes a page of an area the current one. Does nothing in layouts that do not override it.
    virtual void ShowPage(QWidget* area, QWidget* page);
};

Q_DECLARE_INTERFACE(ILayout, "com.velquor.skylume.plugin.ILayout")
