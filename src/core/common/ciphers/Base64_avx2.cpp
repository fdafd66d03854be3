#include "common/ciphers/Base64Vectors_p.h"
#include "common/ciphers/Vectors_avx2_p.h"
#include "common/ciphers/Vectors_ssse3_p.h"

std::size_t Base64Groups::encodeAvx2(const std::uint8_t* bytes, std::size_t groups, std::uint8_t* text)
{
    const std::size_t done = Base64Vectors<Vectors256>::encode(bytes, groups, text);
    return done + Base64Vectors<Vectors128>::encode(bytes + 3 * done, groups - done, text + 4 * done);
}

std::size_t Base64Groups::decodeAvx2(const std::uint8_t* text, std::size_t groups, std::uint8_t* bytes)
{
    const std::size_t done = Base64Vectors<Vectors256>::decode(text, groups, bytes);
    return done + Base64Vectors<Vectors128>::decode(text + 4 * done, groups - done, bytes + 3 * done);
}
