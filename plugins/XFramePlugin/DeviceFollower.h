#pragma once

#include "PageSet.h"
#include "Situation.h"
#include "StatusBarPlace.h"

#include <QObject>
#include <QTimer>

class DeviceEvents;
class IPluginContainer;
class MainWindow;

/// Updates plugins, pages and status bar when modems are attached or removed.
///
/// At the start, the container applies the first customisation on its configuration thread. Device events are
/// only noted until that is done; then the follower checks the attached modems once and handles events from
/// there on.
class DeviceFollower : public QObject
{
    Q_OBJECT

public:
    /// Shows the pages of the plugins that are loaded by now. All arguments must outlive this object.
    DeviceFollower(IPluginContainer& container, MainWindow& window, const DeviceEvents& events);

    /// As PageSet::show().
    bool showPage(const QString& clsid) { return m_pages.show(clsid); }

Q_SIGNALS:
    /// See Customisation::applied() in plugins/support.
    void customised();

private:
    void devicesChanged();
    void noteModem();
    void finishStart();
    void applyKeyOf(const Modems& modems);
    void refresh();
    void showSituation();

    IPluginContainer& m_container;
    MainWindow& m_window;
    PageSet m_pages;
    StatusBarPlace m_statusBar;
    QTimer m_startPoll;
    bool m_hadModem = false; ///< since the start began
    Situation m_situation;
};
