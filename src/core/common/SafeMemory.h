#pragma once

#include "skylume_export.h"

/// Fills min(destMax, count) bytes of a buffer.
/// @param dest    buffer to fill; null is refused
/// @param destMax size of the buffer in bytes; refused when negative as a signed number
/// @param value   its low byte is what is written
/// @param count   number of bytes asked for
/// @return 1 when all bytes asked for were filled (also none); 0 when the call was refused or the buffer was
///         too small (it is filled to its end then)
extern "C" SKYLUME_EXPORT unsigned int QRVL_memset(void* dest, unsigned int destMax, int value,
                                                   unsigned int count);
