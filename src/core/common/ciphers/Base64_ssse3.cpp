#include "common/ciphers/Base64Vectors_p.h"

void Base64Groups::encodeSsse3(const std::uint8_t* bytes, std::size_t size, std::uint8_t* text)
{
    if (size > EndSize)
        Base64Vectors<Vectors128>::encode(bytes, size, text, 0);
    Base64Vectors<Vectors128>::encodeEnd(bytes, size, text);
}

void Base64Groups::decodeSsse3(const std::uint8_t* text, std::uint8_t* bytes, std::size_t size)
{
    if (size > EndSize)
        Base64Vectors<Vectors128>::decode(text, bytes, size, 0);
    Base64Vectors<Vectors128>::decodeEnd(text, bytes, size);
}
