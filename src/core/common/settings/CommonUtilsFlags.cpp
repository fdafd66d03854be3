#include "common/CommonUtils.h"

#include <atomic>

bool gSeparator = true; // exported as a plain variable, so it cannot be atomic

namespace {

constexpr std::memory_order Relaxed = std::memory_order_relaxed; // the flags do not guard other data

std::atomic<bool> g_shuttingDown{false};
std::atomic<bool> g_miniMode{false};
std::atomic<bool> g_closeValue{false};
std::atomic<int> g_frameStyle{1};

} // namespace

bool CommonUtils::IsShuttingDown()
{
    return g_shuttingDown.load(Relaxed);
}

void CommonUtils::SetShutDownFlag()
{
    g_shuttingDown.store(true, Relaxed);
}

void CommonUtils::ResetShutDownFlag()
{
    g_shuttingDown.store(false, Relaxed);
}

bool CommonUtils::IsMiniMode()
{
    return g_miniMode.load(Relaxed);
}

void CommonUtils::SetMiniModeFlag()
{
    g_miniMode.store(true, Relaxed);
}

void CommonUtils::ResetMiniModeFlag()
{
    g_miniMode.store(false, Relaxed);
}

bool CommonUtils::getCloseValue()
{
    return g_closeValue.load(Relaxed);
}

void CommonUtils::setCloseValue(bool value)
{
    g_closeValue.store(value, Relaxed);
}

int CommonUtils::GetFrameStyle()
{
    return g_frameStyle.load(Relaxed);
}

void CommonUtils::SetFrameStyle(int style)
{
    g_frameStyle.store(style, Relaxed);
}

bool CommonUtils::GetSMSSeperatorConfigValue()
{
    return gSeparator;
}

void CommonUtils::SetSMSSeperatorConfigValue(bool value)
{
    gSeparator = value;
}
