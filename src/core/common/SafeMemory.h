#pragma once

#include "skylume_export.h"

/// Fills min(destMax, count) bytes of a buffer.
/// @param dest    buffer to fill; null is refused
/// @param destMax size of the buffer in bytes; refused when negative as a signed number
/// @param value   its low byte is written
/// @param count   number of bytes to fill
/// @return 1 when count bytes were filled, also for 0; 0 when the call was refused or the buffer was too small, in
///         which case all of it is filled
extern "C" SKYLUME_EXPORT unsigned int QRVL_memset(void* dest, unsigned int destMax, int value,
                                                   unsigned int count);
