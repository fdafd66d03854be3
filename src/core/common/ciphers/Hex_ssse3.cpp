#include "common/ciphers/HexVectors_p.h"
#include "common/ciphers/Vectors_ssse3_p.h"

std::size_t Hex::encodeSsse3(const std::uint8_t* bytes, std::size_t size, char* digits)
{
    return HexVectors<Vectors128>::encode(bytes, size, digits);
}

std::size_t Hex::decodeSsse3(const char* digits, std::size_t size, std::uint8_t* bytes)
{
    return HexVectors<Vectors128>::decode(digits, size, bytes);
}
