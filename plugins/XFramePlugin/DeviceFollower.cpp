#include "DeviceFollower.h"

#include "CustomisationKey.h"
#include "MainWindow.h"
#include "PluginContainer/IPluginContainer.h"
#include "support/DeviceEvents.h"

namespace {

// In milliseconds. The configuration thread belongs to the container, which can only be asked whether it is done: it has no
// signal, and a new one would change an interface that plugins are built against.
constexpr int StartPollInterval = 100;

} // namespace

DeviceFollower::DeviceFollower(IPluginContainer& container, MainWindow& window, const DeviceEvents& events)
    : m_container(container)
    , m_window(window)
    , m_pages(container, window)
    , m_statusBar(container, window)
    , m_situation{attachedModems(), {}, {}}
{
    m_pages.arrange();
    m_statusBar.fill();
    showSituation();
    connect(&events, &DeviceEvents::changed, this, &DeviceFollower::devicesChanged);
    connect(&m_startPoll, &QTimer::timeout, this, &DeviceFollower::finishStart);
    m_startPoll.start(StartPollInterval);
    noteModem();
}

void DeviceFollower::noteModem()
{
    m_hadModem |= !attachedModems().isEmpty();
}

void DeviceFollower::finishStart()
{
    if (!m_container.IsPluginsConfigInitialized())
        return;
    m_startPoll.stop();
    const Modems modems = attachedModems();
    if (!modems.isEmpty() || m_hadModem) {
        applyKeyOf(modems);
        return;
    }
    // The container has customised for the modem used last; this applies until a modem is attached.
    m_situation.key = lastUsedDevice();
    refresh();
}

void DeviceFollower::devicesChanged()
{
    if (m_startPoll.isActive()) {
        noteModem();
        return;
    }
    // Events are also sent for detections that found no change, and when the user has chosen one of several modems.
    const Modems modems = attachedModems();
    if (!(modems == m_situation.modems) || customisationKey(m_container, modems) != m_situation.key)
        applyKeyOf(modems);
    else if (unusableState() != m_situation.unusable)
        showSituation();
}

void DeviceFollower::applyKeyOf(const Modems& modems)
{
    m_situation.modems = modems;
    m_situation.key = customisationKey(m_container, modems);
    // The differences are not needed: pages and status bar compare with what is enabled now.
    QList<QString> enabledNow;
    QList<QString> disabledNow;
    m_container.HandleDeviceSwitched(m_situation.key, enabledNow, disabledNow);
    refresh();
}

void DeviceFollower::refresh()
{
    // The code of a page is in its plugin's library: remove pages before libraries are unloaded.
    m_pages.dropDisabled();
    m_statusBar.dropDisabled();
    m_container.UpdateAllStaticOrActivePlugins();
    m_pages.arrange();
    m_statusBar.fill();
    showSituation();
    Q_EMIT customised();
}

void DeviceFollower::showSituation()
{
    m_situation.unusable = unusableState();
    m_window.showSituation(m_situation);
}
