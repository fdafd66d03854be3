#include "DeviceFollower.h"

#include "CustomisationKey.h"
#include "MainWindow.h"
#include "PluginContainer/IPluginContainer.h"

static constexpr int StartPollInterval = 100; // milliseconds

DeviceFollower::DeviceFollower(IPluginContainer& container, MainWindow& window)
    : m_container(container)
    , m_window(window)
    , m_pages(container, window)
    , m_statusBar(container, window)
    , m_modems(attachedModems())
{
    m_pages.arrange();
    m_statusBar.fill();
    showSituation();
    connect(&m_startPoll, &QTimer::timeout, this, &DeviceFollower::finishStart);
    m_startPoll.start(StartPollInterval);
}

void DeviceFollower::finishStart()
{
    if (!m_container.IsPluginsConfigInitialized())
        return;
    m_startPoll.stop();
    const Modems modems = attachedModems();
    if (modems.size() == 1) {
        applyKeyOf(modems);
        return;
    }
    // The start has customised for the modem used last; that stands until a modem comes or goes.
    m_modems = modems;
    m_key = lastUsedDevice();
    refresh();
}

void DeviceFollower::devicesChanged()
{
    if (m_startPoll.isActive())
        return;
    // Events also tell of detections that found nothing new.
    const Modems modems = attachedModems();
    if (!(modems == m_modems))
        applyKeyOf(modems);
}

void DeviceFollower::applyKeyOf(const Modems& modems)
{
    m_modems = modems;
    m_key = customisationKey(m_container, modems);
    // The differences are not used: choosing the key has changed flags already. Pages go by what is enabled
    // now.
    QList<QString> enabledNow;
    QList<QString> disabledNow;
    m_container.HandleDeviceSwitched(m_key, enabledNow, disabledNow);
    refresh();
}

void DeviceFollower::refresh()
{
    // A page's code is in its plugin's library: pages go before their libraries do.
    m_pages.dropDisabled();
    m_statusBar.dropDisabled();
    m_container.UpdateAllStaticOrActivePlugins();
    m_pages.arrange();
    m_statusBar.fill();
    showSituation();
}

void DeviceFollower::showSituation()
{
    m_window.showSituation(m_modems, m_key);
}
