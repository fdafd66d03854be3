#pragma once

#include "common/CommonUtils.h"
#include "support/BoolSetting.h"

#include <QIcon>

/// The frame of the application's windows.
namespace FrameStyle {

// In device-independent pixels.
constexpr int BorderWidth = 4;        ///< around each window
constexpr int DialogTitleHeight = 36; ///< of the title bars of dialogs

constexpr BoolSetting HasDesktopFrame{QLatin1String("mainwindow"), QLatin1String("systemframe")};

/// Whether windows draw their own frame. The setting "systemframe" of the section "mainwindow" switches it off.
inline bool isOwn()
{
    return !HasDesktopFrame.isSet();
}

/// Stores that setting. The main window follows it at the next start.
inline void useDesktopFrame(bool isUsed)
{
    HasDesktopFrame.set(isUsed);
}

/// The picture of the application, in windows and title bars.
inline QIcon picture()
{
    return QIcon(CommonUtils::GetPluginLibraryPath() + QLatin1String("/plugins/XFramePlugin/Startup.png"));
}

} // namespace FrameStyle
