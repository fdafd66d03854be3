#pragma once

#include "common/CommonUtils.h"

#include <QIcon>

/// The frame of the application's windows.
namespace FrameStyle {

// In device-independent pixels.
constexpr int BorderWidth = 4;        ///< around each window
constexpr int DialogTitleHeight = 36; ///< of the title bars of dialogs

constexpr QLatin1String Section("mainwindow");
constexpr QLatin1String Key("systemframe");

/// Whether windows draw their own frame. The setting "systemframe" of the section "mainwindow" switches it off.
inline bool isOwn()
{
    return CommonUtils::GetSettings(Section, Key) != QLatin1String("true");
}

/// Stores that setting. The main window follows it at the next start.
inline void useDesktopFrame(bool isUsed)
{
    CommonUtils::SetSettings(Section, Key, QLatin1String(isUsed ? "true" : "false"));
}

/// The picture of the application, in windows and title bars.
inline QIcon picture()
{
    return QIcon(CommonUtils::GetPluginLibraryPath() + QLatin1String("/plugins/XFramePlugin/Startup.png"));
}

} // namespace FrameStyle
