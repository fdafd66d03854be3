#include "common/CommonUtils.h"

#include "common/Log.h"

#include <QThread>

void CommonUtils::WaitForThreadToStop(QThread* thread, unsigned int unMaxWait)
{
    LOG_DEBUG("%s: %s: %s: Enter. unMaxWait: %u", LOG_TIME, LOG_FILE, LOG_FUNCTION, unMaxWait);
    if (!thread)
        return;
    thread->quit();
    if (thread->isRunning())
        thread->wait(unMaxWait * 1000UL);
    if (thread->isRunning())
        thread->terminate();
    LOG_DEBUG("%s: %s: %s: Leave ", LOG_TIME, LOG_FILE, LOG_FUNCTION);
}
