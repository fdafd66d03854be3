#pragma once

#include "common/Log.h"
#include "common/SafeMemory.h"

#include <algorithm>
#include <climits>

/// Clears a buffer with QRVL_memset(), which refuses null and sizes of 2 GiB and more. A refusal is logged with
/// the caller's location.
inline void clearBuffer(void* buffer, std::size_t size, const char* file, const char* function, int line)
{
    const auto count = unsigned(std::min<std::size_t>(size, UINT_MAX));
    if (!QRVL_memset(buffer, count, 0, count))
        LOG_DEBUG("%s: %s: %s: %d: QRVL_memset fail ", LOG_TIME, file, function, line);
}
