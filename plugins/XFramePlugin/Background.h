#pragma once

/// Whether the application keeps running in the notification area after its window is closed: the user's choice, kept in the
/// section "mainwindow" of the settings ("closetotray"). GUI thread.
namespace Background {

bool isWanted();
void setWanted(bool isWanted);

/// Notes in the setting "closetotraytold" that closing has hidden the window.
/// @return whether that was the first time, and the user is to be told where the window has gone
bool noteHidden();

/// Whether the desktop has started the application for the user, with the option --background.
bool isStart();

} // namespace Background
