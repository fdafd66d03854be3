#include "common/CommonUtils.h"

// Plain variables without a lock: other threads may see an older value.
bool gSeparator = true;

namespace {

bool g_shuttingDown = false;
bool g_miniMode = false;
bool g_closeValue = false;
int g_frameStyle = 1;

} // namespace

bool CommonUtils::IsShuttingDown()
{
    return g_shuttingDown;
}

void CommonUtils::SetShutDownFlag()
{
    g_shuttingDown = true;
}

void CommonUtils::ResetShutDownFlag()
{
    g_shuttingDown = false;
}

bool CommonUtils::IsMiniMode()
{
    return g_miniMode;
}

void CommonUtils::SetMiniModeFlag()
{
    g_miniMode = true;
}

void CommonUtils::ResetMiniModeFlag()
{
    g_miniMode = false;
}

bool CommonUtils::getCloseValue()
{
    return g_closeValue;
}

void CommonUtils::setCloseValue(bool value)
{
    g_closeValue = value;
}

int CommonUtils::GetFrameStyle()
{
    return g_frameStyle;
}

void CommonUtils::SetFrameStyle(int style)
{
    g_frameStyle = style;
}

bool CommonUtils::GetSMSSeperatorConfigValue()
{
    return gSeparator;
}

void CommonUtils::SetSMSSeperatorConfigValue(bool value)
{
    gSeparator = value;
}
