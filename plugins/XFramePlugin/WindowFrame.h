#pragma once

#include <QObject>

class HeaderBar;
class QVBoxLayout;
class TitleBar;

/// The application's own frame around the main window: one bar that is title bar and header, a border with
/// which the window is resized, and rounded upper corners. Minimising the window hides the other windows of the
/// application; they return with it.
class WindowFrame : public QObject
{
    Q_OBJECT

public:
    /// Puts the title bar at the top of the layout and the header into it.
    /// @param window frameless; it owns the frame and all its parts
    /// @param layout of the window
    WindowFrame(QWidget* window, QVBoxLayout* layout, HeaderBar* header);

    /// The height of the picture at the start of the title bar, in pixels.
    void setPictureSize(int size);

    /// Handles a message of the window system to the window, see QWidget::nativeEvent().
    bool nativeEvent(void* message, long* result);

    bool isMaximized() const;
    void setMaximized(bool isMaximized);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void attach();
    void takeHeader(HeaderBar* header);
    void minimize();
    void windowStateChanged(Qt::WindowStates before);
    void desktopMaximized();
    void desktopRestored(Qt::WindowState state);
    void resized();
    void roundCorners();
    void paint();

    QWidget* m_window;
    TitleBar* m_titleBar;
    bool m_isMaximizedByDesktop = false;
};
