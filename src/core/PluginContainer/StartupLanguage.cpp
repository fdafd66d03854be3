// The first-run mark, and the language that the application starts in.
#include "PluginContainer/PluginContainer.h"

#include "common/CommonUtils.h"
#include "common/Log.h"

namespace {

struct FirstRunMark
{
    QString section = QStringLiteral("Startup");
    QString key = QStringLiteral("init");
    QString set = QStringLiteral("true");
};

} // namespace

bool PluginContainer::isFirstTimeStart()
{
    LOG_DEBUG("%s: %s: %s: enter", LOG_TIME, LOG_FILE, LOG_FUNCTION);
    const FirstRunMark mark;
    if (CommonUtils::GetSettings(mark.section, mark.key) != mark.set) {
        LOG_DEBUG("%s: %s: %s: first time startup", LOG_TIME, LOG_FILE, LOG_FUNCTION);
        return true;
    }
    LOG_DEBUG("%s: %s: %s: not first time startup", LOG_TIME, LOG_FILE, LOG_FUNCTION);
    return false;
}

void PluginContainer::setRunningMark()
{
    const FirstRunMark mark;
    CommonUtils::SetSettings(mark.section, mark.key, mark.set);
}

/// No installation asks for a language that follows the computer's locale yet, so the stored one stays.
void PluginContainer::setStartupLanguage()
{
    LOG_DEBUG("%s: %s: %s: enter", LOG_TIME, LOG_FILE, LOG_FUNCTION);
}
