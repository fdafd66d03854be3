#pragma once

#include "PluginContainer/BasePlugin.h"
#include "PluginContainer/interfaces/IMainFrameUIService.h"
#include "PluginContainer/interfaces/IUIPlugin.h"
#include "support/DeviceEvents.h"

#include <QPointer>
#include <QTimer>

#include <memory>

class DeviceFollower;
class LanguageSwitch;
class MainWindow;

/// The main frame: builds the main window, embeds the pages of the other plugins and updates them when modems
/// are attached or removed.
class XFramePlugin : public BasePlugin, public IUIPlugin, public IMainFrameUIService
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.velquor.skylume.plugin.IBasePlugin")
    Q_INTERFACES(IUIPlugin IMainFrameUIService)

public:
    XFramePlugin();
    ~XFramePlugin() override;

    void Destroy() override;
    void UnSDKRegisterEvent() override;

    /// Builds and shows the main window, loads the static and active plugins and embeds their pages. The
    /// splash screen is closed shortly afterwards, from the event loop.
    QWidget* BuildFrame(QWidget* parent, const QRect& geometry) override;

    QWidget* GetMainWindow() override;
    QString GetLayoutPluginClsid() override;
    bool UsesCustomFrame() override;
    int GetTitleHeight() override;
    int GetFrameWidth() override;
    bool ShowPage(const QString& clsid) override;

Q_SIGNALS:
    /// See Customisation::applied() in plugins/support, which finds this signal by its name.
    void customised();

public Q_SLOTS:
    /// Opens the settings with the page of a plugin. For other plugins, through QMetaObject::invokeMethod().
    void openSettings(const QString& clsid);

private:
    void closeSplashScreen();

    DeviceEvents m_deviceEvents;
    QTimer m_splashTimer; ///< QTimer::singleShot() could call into the unloaded library
    std::unique_ptr<LanguageSwitch> m_language;
    QPointer<MainWindow> m_window;
    std::unique_ptr<DeviceFollower> m_follower;
};
