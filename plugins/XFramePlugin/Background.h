#pragma once

/// Whether the application goes on in the notification area when its window is closed: the user's choice, kept in the
/// section "mainwindow" of the settings ("closetotray"). GUI thread.
namespace Background {

bool isWanted();
void setWanted(bool isWanted);

/// Whether this is the first call ever; the user is told about the notification area once ("closetotraytold").
bool isNew();

/// Whether the desktop has started the application for the user, with the option --background.
bool isStart();

} // namespace Background
