#pragma once

#include <QPointer>
#include <QWidget>

class IPluginContainer;
class MainWindow;

/// The bottom of the main window, where the status-bar plugin's widget is while that plugin is enabled.
class StatusBarPlace
{
public:
    /// Both arguments must outlive this object.
    StatusBarPlace(IPluginContainer& container, MainWindow& window);

    /// Deletes the status bar if its plugin is no longer enabled; to be called while its library is still
    /// loaded.
    void dropDisabled();

    /// Adds the status bar if it is missing.
    void fill();

private:
    IPluginContainer& m_container;
    MainWindow& m_window;
    QPointer<QWidget> m_statusBar;
};
