#pragma once

#include <cstddef>
#include <cstdint>

namespace Ciphers {

/// Whether two pieces of memory, neither of them empty, have a byte in common.
inline bool overlap(const void* a, std::size_t aSize, const void* b, std::size_t bSize)
{
    const auto aStart = reinterpret_cast<std::uintptr_t>(a), bStart = reinterpret_cast<std::uintptr_t>(b);
    return aStart < bStart + bSize && bStart < aStart + aSize;
}

} // namespace Ciphers
