#pragma once

#include "PageSet.h"
#include "Situation.h"
#include "StatusBarPlace.h"

#include <QObject>
#include <QTimer>

class DeviceEvents;
class IPluginContainer;
class MainWindow;

/// Keeps plugins, pages and status bar in line with the attached modem.
///
/// The container finishes the customisation of the start on a thread of its own. Until that is done device
/// events are left alone; then the follower looks at the modems itself and goes by the events from there on.
class DeviceFollower : public QObject
{
    Q_OBJECT

public:
    /// Shows the pages of the plugins that are loaded by now. All arguments must outlive this object.
    DeviceFollower(IPluginContainer& container, MainWindow& window, const DeviceEvents& events);

private:
    void devicesChanged();
    void finishStart();
    void applyKeyOf(const Modems& modems);
    void refresh();
    void showSituation();

    IPluginContainer& m_container;
    MainWindow& m_window;
    const DeviceEvents& m_events;
    PageSet m_pages;
    StatusBarPlace m_statusBar;
    QTimer m_startPoll;
    Situation m_situation;
};
