#include "common/ciphers/Base64Vectors_p.h"
#include "common/ciphers/Vectors_ssse3_p.h"

std::size_t Base64Groups::encodeSsse3(const std::uint8_t* bytes, std::size_t size, std::uint8_t* text)
{
    const std::size_t done = Base64Vectors<Vectors128>::encode(bytes, size, text);
    return Base64Vectors<Vectors128>::encodeRest(bytes, size, text, done);
}

std::size_t Base64Groups::decodeSsse3(const std::uint8_t* text, std::uint8_t* bytes, std::size_t size)
{
    const std::size_t done = Base64Vectors<Vectors128>::decode(text, bytes, size);
    return Base64Vectors<Vectors128>::decodeRest(text, bytes, size, done);
}
