#pragma once

#include "PluginContainer/interfaces/ICallUIPlugin.h"
#include "skylume_global.h"

#include <QString>
#include <QStringList>

class IDeviceMgr;
class ILayout;
class QThread;
class QWidget;

/// Whether menus show the separator right behind their search entry; see SetSMSSeperatorConfigValue().
extern SKYLUME_EXPORT bool gSeparator;

/// Services that every plugin and every part of the core library share. All operations are static and may be
/// called from any thread unless stated; none throws.
class SKYLUME_EXPORT CommonUtils
{
public:
    // ---- Settings, kept by the device service

    /// The value of a setting in the merged view: the user's value, else the installation's default.
    /// @return empty when there is no value or the store failed (which a warning tells); callers supply their
    ///         own defaults
    static QString GetSettings(QString section, QString key);

    /// As GetSettings, from the user's store alone.
    static QString GetUserSettings(QString section, QString key);

    /// Writes a setting to the user's store.
    /// @return the inverse of what one expects: true when the store refused the value
    static bool SetSettings(QString section, QString key, QString value);

    // ---- Well-known plugins; every one may be missing

    /// The device manager, or null.
    static IDeviceMgr* GetDeviceMgrPlugin();

    /// The main window, or null. Use it on the GUI thread.
    static QWidget* GetMainWindow();

    /// The layout plugin that the main frame names, or null.
    static ILayout* GetLayoutPlugin();

    /// Whether a plugin is known, enabled and loadable; loads its library. False without a plugin host.
    static bool IsPluginAvailable(QString clsid);

    /// Places a call through the call plugin.
    /// @param number the number to call; an empty one is refused
    /// @return what the call plugin answers; false without a call plugin. The plugin shows windows: use it on the GUI
    ///         thread.
    static bool MakeCall(QString number, _UI_EN_CALL_TYPE type);

    /// The clsids of plugins that the main frame may embed: all of type 0 other than those with a place of
    /// their own, in file order.
    static QStringList GetUIEmbedPlugibList();

    // ---- Places

    /// The installation: the folder of the executable. "config", "plugins" and "skin" lie below it.
    static QString GetPluginLibraryPath();

    /// Opens a document or an address with the desktop's own program.
    /// @param target a local file when it ends with "pdf", "html" or "htm" in lower case, else a URL
    /// @return whether a program was started
    static bool OpenUrl(QString target);

    // ---- Process-wide flags: plain variables without a lock

    static bool IsShuttingDown();
    static void SetShutDownFlag();
    static void ResetShutDownFlag();

    static bool IsMiniMode();
    static void SetMiniModeFlag();
    static void ResetMiniModeFlag();

    static bool getCloseValue();
    static void setCloseValue(bool value);

    /// A set of bits, 1 at first. Bit value 4 takes a further plugin out of GetUIEmbedPlugibList().
    static int GetFrameStyle();
    static void SetFrameStyle(int style);

    static bool GetSMSSeperatorConfigValue();
    static void SetSMSSeperatorConfigValue(bool value);

    // ---- Threads

    /// Stops a thread: asks its event loop to end, waits, and terminates it as a last resort.
    /// @param thread    null is ignored
    /// @param unMaxWait longest wait in seconds; there is no wait after a termination
    static void WaitForThreadToStop(QThread* thread, unsigned int unMaxWait);
};
