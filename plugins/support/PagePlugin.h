#pragma once

#include "PluginContainer/BasePlugin.h"
#include "PluginContainer/interfaces/IUIPlugin.h"
#include "support/DeviceEvents.h"

#include <QPointer>

/// A plugin with a page in the main window. Derived classes only create the page; this class deletes it and
/// unregisters from the device service when the plugin is unloaded.
///
///     class HelloPlugin : public PagePlugin
///     {
///         Q_OBJECT
///         Q_PLUGIN_METADATA(IID "com.velquor.skylume.plugin.IBasePlugin")
///
///     protected:
///         QWidget* createPage(QWidget* parent) override;
///     };
///
/// GUI thread only.
class PagePlugin : public BasePlugin, public IUIPlugin
{
    Q_OBJECT
    Q_INTERFACES(IUIPlugin)

public:
    PagePlugin();

    /// Creates the page; an earlier one is deleted first.
    QWidget* BuildFrame(QWidget* parent, const QRect& geometry) override;

    /// A derived class that overrides one of these must call it as well.
    void Destroy() override;
    void UnSDKRegisterEvent() override;

protected:
    /// Creates the page. Its window title and window icon are its title and picture in the main window.
    /// @return the page, never null; this class deletes it
    virtual QWidget* createPage(QWidget* parent) = 0;

    /// Registers with the device service.
    /// @return the events of the modems; belongs to this object
    DeviceEvents* followDevices();

private:
    DeviceEvents m_deviceEvents;
    QPointer<QWidget> m_page;
};
