#pragma once

#include <cstddef>
#include <cstring>

static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "the ciphers exchange the bytes of every word");

namespace Ciphers {

/// Clears memory that held a key or plaintext. The compiler cannot remove it, although the memory is not read
/// again. Always inlined: files that are compiled for different processors must not share functions.
[[gnu::always_inline]] inline void wipe(void* bytes, std::size_t count)
{
    if (count == 0)
        return;
    std::memset(bytes, 0, count);
    __asm__ volatile("" : : "r"(bytes) : "memory");
}

} // namespace Ciphers
