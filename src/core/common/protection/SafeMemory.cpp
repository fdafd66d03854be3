#include "common/SafeMemory.h"

#include <algorithm>
#include <cstring>

unsigned int QRVL_memset(void* dest, unsigned int destMax, int value, unsigned int count)
{
    if (!dest || static_cast<int>(destMax) < 0)
        return 0;
    std::memset(dest, value, std::min(destMax, count));
    return count > destMax ? 0 : 1;
}
