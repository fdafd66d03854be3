// The splash screen of the start. The main frame's configuration does not ask for one yet, so none is shown.
#include "Startup/Startup.h"

#include "common/Log.h"

QProcess* Startup::m_pSplashScreen = nullptr;
QTime Startup::m_pSplashStartAt;

bool Startup::haveSplashScreen()
{
    LOG_DEBUG("%s: %s: splash=%d", LOG_FILE, LOG_FUNCTION, 0);
    return false;
}

void Startup::showSplashStartupTime()
{
    m_pSplashStartAt = QTime::currentTime();
}

int Startup::GetSplashScreen()
{
    return m_pSplashStartAt.msecsTo(QTime::currentTime());
}

void Startup::CloseSplashScreen() {}
