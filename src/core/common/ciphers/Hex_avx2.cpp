#include "common/ciphers/HexVectors_p.h"
#include "common/ciphers/Vectors_avx2_p.h"

std::size_t Hex::encodeAvx2(const std::uint8_t* bytes, std::size_t size, char* digits)
{
    return HexVectors<Vectors256>::encode(bytes, size, digits);
}

std::size_t Hex::decodeAvx2(const char* digits, std::size_t size, std::uint8_t* bytes)
{
    return HexVectors<Vectors256>::decode(digits, size, bytes);
}
