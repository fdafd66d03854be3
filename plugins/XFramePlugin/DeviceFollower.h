#pragma once

#include "PageSet.h"
#include "StatusBarPlace.h"
#include "support/Modems.h"

#include <QObject>
#include <QTimer>

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
    /// Shows the pages of the plugins that are loaded by now. Both arguments must outlive this object.
    DeviceFollower(IPluginContainer& container, MainWindow& window);

    /// To be called when the set of modems may have changed.
    void devicesChanged();

private:
    void finishStart();
    void applyKeyOf(const Modems& modems);
    void refresh();
    void showSituation();

    IPluginContainer& m_container;
    MainWindow& m_window;
    PageSet m_pages;
    StatusBarPlace m_statusBar;
    QTimer m_startPoll;
    Modems m_modems;
    QString m_key; ///< customisation key in force
};
