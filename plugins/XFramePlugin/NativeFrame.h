#pragma once

class QWidget;
class TitleBar;

/// What the window system does for a main window that draws its own frame. Windows lets the user drag it as its own
/// windows, so that it snaps to the edges of the screen and takes over the density of another one; it also snaps when
/// its keys are pressed. X11 and Wayland need no help.
namespace NativeFrame {

/// Prepares a native window. Call it as soon as it has been created.
void attach(const QWidget& window);

/// Handles a message to the window of a title bar, see QWidget::nativeEvent().
bool handle(TitleBar& titleBar, void* message, long* result);

} // namespace NativeFrame
