#include "XFramePlugin.h"

#include "DeviceFollower.h"
#include "FrameStyle.h"
#include "LanguageSwitch.h"
#include "MainWindow.h"
#include "PluginContainer/IPluginContainer.h"
#include "PluginContainer/PluginIds.h"
#include "SettingsDialog.h"
#include "Startup/SplashDelay.h"
#include "Startup/Startup.h"
#include "support/Clsids.h"

#include <QRect>

namespace {

constexpr int ShortestSplash = SplashDelay + 600; // milliseconds since the start of the splash program

} // namespace

XFramePlugin::XFramePlugin()
{
    publish(PluginIds::MainFrameService, this);
    m_splashTimer.setSingleShot(true);
    connect(&m_splashTimer, &QTimer::timeout, this, [] { Startup::CloseSplashScreen(); });
}

XFramePlugin::~XFramePlugin() = default;

void XFramePlugin::Destroy()
{
    UnSDKRegisterEvent();
    Startup::CloseSplashScreen();
    m_follower.reset();
    if (m_window && m_window->isVisible())
        m_window->rememberPlace();
    delete m_window;
    m_language.reset();
}

void XFramePlugin::UnSDKRegisterEvent()
{
    m_deviceEvents.stop();
}

QWidget* XFramePlugin::BuildFrame(QWidget* parent, const QRect& geometry)
{
    m_language = std::make_unique<LanguageSwitch>();
    m_window = new MainWindow(*m_language, parent);
    if (!geometry.isNull())
        m_window->setGeometry(geometry);
    m_window->showAtStart();

    Startup::GetPluginContainer()->LoadAllStaticOrActivePlugin();
    m_follower = std::make_unique<DeviceFollower>(*Startup::GetPluginContainer(), *m_window, m_deviceEvents);
    connect(m_follower.get(), &DeviceFollower::customised, this, &XFramePlugin::customised);
    connect(m_window, &MainWindow::pageChosen, this, &XFramePlugin::ShowPage);
    connect(&m_deviceEvents, &DeviceEvents::statusChanged, m_window, &MainWindow::showStatus);
    m_deviceEvents.listen();
    closeSplashScreen();
    return m_window;
}

void XFramePlugin::closeSplashScreen()
{
    // A splash screen that disappears at once looks like a fault. The window can be used meanwhile.
    const int elapsed = Startup::GetSplashScreen();
    m_splashTimer.start(elapsed < SplashDelay ? 0 : qBound(0, ShortestSplash - elapsed, ShortestSplash));
}

QWidget* XFramePlugin::GetMainWindow()
{
    return m_window;
}

QString XFramePlugin::GetLayoutPluginClsid()
{
    return Clsids::Layout;
}

bool XFramePlugin::UsesCustomFrame()
{
    return FrameStyle::isOwn();
}

int XFramePlugin::GetTitleHeight()
{
    return FrameStyle::DialogTitleHeight;
}

int XFramePlugin::GetFrameWidth()
{
    return FrameStyle::BorderWidth;
}

bool XFramePlugin::ShowPage(const QString& clsid)
{
    if (!m_follower || !m_follower->showPage(clsid))
        return false;
    m_window->bringToFront();
    return true;
}

void XFramePlugin::openSettings(const QString& clsid)
{
    if (m_window)
        showSettings(*m_window, clsid);
}
