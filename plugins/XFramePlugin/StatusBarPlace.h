#pragma once

#include <QPointer>
#include <QWidget>

class IPluginContainer;
class MainWindow;

/// Keeps the widget of the status-bar plugin at the bottom of the main window while that plugin is enabled.
class StatusBarPlace
{
public:
    /// Both arguments must outlive this object.
    StatusBarPlace(IPluginContainer& container, MainWindow& window);

    /// Deletes the status bar if its plugin is no longer enabled. Call this while its library is still
    /// loaded.
    void dropDisabled();

    /// Adds the status bar if it is missing.
    void fill();

private:
    IPluginContainer& m_container;
    MainWindow& m_window;
    QPointer<QWidget> m_statusBar;
};
