#pragma once

#include <cstddef>
#include <cstring>

static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "the ciphers exchange the bytes of every word");

namespace Ciphers {

/// Clears memory that held a key or a plain text. The compiler may not leave it out, although nobody reads
/// the memory any more. Always inlined, since files for certain processors must not share functions with
/// others.
[[gnu::always_inline]] inline void wipe(void* bytes, std::size_t count)
{
    if (count == 0)
        return;
    std::memset(bytes, 0, count);
    __asm__ volatile("" : : "r"(bytes) : "memory");
}

} // namespace Ciphers
