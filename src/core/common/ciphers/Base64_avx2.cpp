#include "common/ciphers/Base64Vectors_p.h"
#include "common/ciphers/Vectors_avx2_p.h"

void Base64Groups::encodeAvx2(const std::uint8_t* bytes, std::size_t size, std::uint8_t* text)
{
    if (size > EndSize) {
        const std::size_t done = Base64Vectors<Vectors256>::encode(bytes, size, text, 0);
        Base64Vectors<Vectors128>::encode(bytes, size, text, done);
    }
    Base64Vectors<Vectors256>::encodeEnd(bytes, size, text);
}

void Base64Groups::decodeAvx2(const std::uint8_t* text, std::uint8_t* bytes, std::size_t size)
{
    if (size > EndSize) {
        const std::size_t done = Base64Vectors<Vectors256>::decode(text, bytes, size, 0);
        Base64Vectors<Vectors128>::decode(text, bytes, size, done);
    }
    Base64Vectors<Vectors256>::decodeEnd(text, bytes, size);
}
