#pragma once

#include "common/Log.h"
#include "common/SafeMemory.h"

/// Clears a buffer with QRVL_memset(), which refuses sizes of 2 GiB and more; a log line in the caller's name tells that.
inline void clearBuffer(void* buffer, std::size_t size, const char* file, const char* function, int line)
{
    if (!QRVL_memset(buffer, unsigned(size), 0, unsigned(size)))
        LOG_DEBUG("%s: %s: %s: %d: QRVL_memset fail ", LOG_TIME, file, function, line);
}
