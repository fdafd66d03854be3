#pragma once

#include "skylume_global.h"

#include <QtPlugin>

class QRect;
class QWidget;

/// A plugin with a user interface: the root object of the main-frame plugin, and the first service
/// (PluginIds::FirstService) of a plugin whose page the main frame embeds. GUI thread only.
class SKYLUME_EXPORT IUIPlugin
{
public:
    virtual ~IUIPlugin();

    /// Builds the plugin's widget: the main window (built and shown), or a page to embed. Its window title
    /// and window icon are the page's title and icon.
    /// @param parent   parent of the widget; null for the main window
    /// @param geometry where to put it; a null rectangle leaves that to the plugin
    /// @return the widget. The plugin deletes it in Destroy() if it still exists; whoever embeds a page may
    ///         delete it earlier and ask for a new one.
    virtual QWidget* BuildFrame(QWidget* parent, const QRect& geometry) = 0;
};

Q_DECLARE_INTERFACE(IUIPlugin, "com.velquor.skylume.plugin.IUIPlugin")
