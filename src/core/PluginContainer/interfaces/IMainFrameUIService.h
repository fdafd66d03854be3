#pragma once

#include "skylume_global.h"

#include <QString>
#include <QtPlugin>

class QWidget;

/// The main-frame plugin's service for the rest of the application, available as
/// PluginIds::MainFrameService. GUI thread only.
class SKYLUME_EXPORT IMainFrameUIService
{
public:
    virtual ~IMainFrameUIService();

    /// The main window; null before it is built. Belongs to the main frame.
    virtual QWidget* GetMainWindow() = 0;

    /// The clsid of the plugin that lays out the main window; empty when there is none.
    virtual QString GetLayoutPluginClsid() = 0;

    // ---- The frame of dialogs. A main frame that does not override these has dialogs with the system's frame.

    /// Whether dialogs draw their own frame and title bar.
    virtual bool UsesCustomFrame();

    /// Height of a dialog's title bar in pixels.
    virtual int GetTitleHeight();

    /// Width of a dialog's border in pixels.
    virtual int GetFrameWidth();

    // ---- Pages

    /// Brings the main window to the front with the page of a plugin. Does nothing in main frames that do not
    /// override it.
    /// @return false if the plugin has no page in the window
    virtual bool ShowPage(const QString& clsid);
};

Q_DECLARE_INTERFACE(IMainFrameUIService, "com.velquor.skylume.plugin.IMainFrameUIService")
