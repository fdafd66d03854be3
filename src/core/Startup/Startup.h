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

/// The application's start and end. The launcher constructs one object on the GUI thread, after QApplication;
/// the constructor runs the whole start and returns when the main window is up. Deleting the object unloads
/// every plugin.
///
/// The class-wide pointers give plugins and library the plugin host and the main frame without the object at
/// hand.
class SKYLUME_EXPORT Startup : public QObject
{
public:
    /// Runs the start.
    /// @param noSplash true leaves out the splash screen, whatever the configuration says
    ///
    /// A missing main frame is only logged; it shows in GetMainFrame() or GetMainFrameService() being null.
    explicit Startup(bool noSplash);

    /// Deletes the plugin host, which unloads every plugin, the main frame last. The pointers to main frame
    /// and splash screen are left as they are and must not be used any more.
    ~Startup() override;

    /// The plugin host; null before the start and after the end.
    static IPluginContainer* GetPluginContainer();

    /// The main frame; null when none could be loaded.
    static IUIPlugin* GetMainFrame();

    /// The main frame's service; null when the main frame has none.
    static IMainFrameUIService* GetMainFrameService();

    /// Milliseconds since the splash screen was shown; meaningless when it never was.
    static int GetSplashScreen();

    /// Closes the splash screen; does nothing when there is none. The main frame calls it once its window is
    /// up.
    static void CloseSplashScreen();

    /// A text of the main frame's language file, for use during the start; empty when there is none.
    static QString tr(QString key);

    /// Writes a part of a property list that hides the application's dock icon, for systems that have one.
    /// @param path the file to write
    /// @return always true
    static bool hideDockIcon(QString path);

protected:
    // ---- Splash screen

    /// Whether plugins/XFramePlugin/Config.xml asks for one. The first "splash" in the first "function" is
    /// the default, true when there is none; the operator's "customize" section overrides it. Only "true"
    /// says yes.
    /// @return false without that file
    static bool haveSplashScreen();

    /// Overrides the default by the next "customize" section of that operator.
    /// @param reader       goes on from where it is
    /// @param operatorName compared with the section's "name"
    /// @param have         stays as it is without such a section. A section for a "device" never says yes.
    static void operatorHaveSplashScreen(QXmlStreamReader& reader, QString operatorName, bool& have);

    /// Starts the program XStartScreen.exe beside the application, if it is there, and does not wait for it.
    /// Its arguments are the folder of the picture and that of the plugins.
    static void showSplashScreen();

    /// Shows the splash screen and notes the time.
    static void showSplashStartupTime();

    bool initializePluginContainer(QString& pluginsLib, QString& pluginsConfig, bool noSplash);
    bool loadMainFramePlugin();

    static IPluginContainer* m_pPluginContainer;
    static QProcess* m_pSplashScreen; ///< the splash program; null when there is none
    static QTime m_pSplashStartAt;    ///< when it was shown; invalid until then
    static IUIPlugin* m_pUiPlugin;
    static IMainFrameUIService* m_pUiPluginService;
};
