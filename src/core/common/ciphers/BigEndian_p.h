#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

/// Big-endian numbers, as the standards of ciphers and hashes use them.
namespace Ciphers {

inline std::uint32_t loadBigEndian(const unsigned char* bytes)
{
    std::uint32_t word = 0;
    std::memcpy(&word, bytes, sizeof word);
    return __builtin_bswap32(word);
}

inline void storeBigEndian(std::uint32_t word, unsigned char* bytes)
{
    word = __builtin_bswap32(word);
    std::memcpy(bytes, &word, sizeof word);
}

} // namespace Ciphers
