#pragma once

#include "skylume_global.h"

#include <QObject>
#include <QString>
#include <QTime>

class IMainFrameUIService;
class IPluginContainer;
class IUIPlugin;
class QProcess;
class QXmlStreamReader;

/// Starts and ends the application. The launcher constructs one object on the GUI thread, after QApplication.
/// The constructor runs the whole start-up and returns when the main window is built. Deleting the object
/// unloads all plugins.
///
/// The static operations give plugins and the library access to the plugin container and the main frame.
class SKYLUME_EXPORT Startup : public QObject
{
public:
    /// Runs the start-up. If there is no usable main frame, this is only logged, and GetMainFrame() or
    /// GetMainFrameService() returns null.
    /// @param noSplash true suppresses the splash screen regardless of the configuration
    explicit Startup(bool noSplash);

    /// Deletes the plugin container, which unloads all plugins, the main frame last. The pointers to the main
    /// frame are not cleared and must not be used afterwards.
    ~Startup() override;

    /// The plugin container; null before start-up and after destruction.
    static IPluginContainer* GetPluginContainer();

    /// The main frame; null if none could be loaded.
    static IUIPlugin* GetMainFrame();

    /// The main frame's service; null if the main frame has none.
    static IMainFrameUIService* GetMainFrameService();

    /// Milliseconds since the splash screen was shown, at most a day; meaningless if it never was.
    static int GetSplashScreen();

    /// Ends the splash program; has no effect if there is none. For the main frame, once its window is visible.
    static void CloseSplashScreen();

    /// A text of the main frame's language file, for use during start-up; empty if there is none.
    static QString tr(QString key);

    /// Writes a property-list fragment that hides the application's dock icon, for systems with a dock.
    /// @param path the file to write
    /// @return always true, also if the file cannot be written
    static bool hideDockIcon(QString path);

protected:
    // ---- Splash screen

    /// Whether plugins/XFramePlugin/Config.xml enables the splash screen. The first "splash" in the first
    /// "function" is the default, or true if there is none; the operator's "customize" section overrides it.
    /// Any value other than "true" means no.
    /// @return false if the file cannot be opened
    static bool haveSplashScreen();

    /// Applies the next "customize" section of an operator to the decision.
    /// @param reader       read from its current position on
    /// @param operatorName compared with the section's "name", case-sensitive
    /// @param have         the decision; unchanged without such a section, false if the section has a "device"
    static void operatorHaveSplashScreen(QXmlStreamReader& reader, QString operatorName, bool& have);

    /// Starts the program XStartScreen.exe beside the application, if it exists, without waiting for it. Its
    /// arguments are the pictures' folder and the plugins' folder.
    static void showSplashScreen();

    /// Shows the splash screen and records the time.
    static void showSplashStartupTime();

    // ---- Steps of the start-up

    /// Creates the plugin container; the destructor deletes it.
    /// @param pluginsLib, pluginsConfig, noSplash passed on to the constructor of PluginContainer
    /// @return always true
    bool initializePluginContainer(QString& pluginsLib, QString& pluginsConfig, bool noSplash);

    /// Loads the main frame and lets it build the main window. Needs the plugin container.
    /// @return false (logged) if there is no main frame or it lacks one of its two interfaces
    bool loadMainFramePlugin();

    static IPluginContainer* m_pPluginContainer;
    static QProcess* m_pSplashScreen; ///< the running splash program, or null; owned
    static QTime m_pSplashStartAt;    ///< when the splash screen was shown; invalid until then
    static IUIPlugin* m_pUiPlugin;
    static IMainFrameUIService* m_pUiPluginService;
};
