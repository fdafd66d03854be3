#pragma once

#include "skylume_export.h"

#include <cstddef>
#include <cstdint>

/// Hexadecimal digits, two for each byte, upper case when written.
namespace Hex {

/// Encode or decode bytes from the first on, as many as suit the instruction set; the others are left to the
/// caller. Nothing else is written or read, and what is encoded is read before its digits are written.
/// @return the number of bytes that are done
using Encode = std::size_t(const std::uint8_t* bytes, std::size_t size, char* digits);
using Decode = std::size_t(const char* digits, std::size_t size, std::uint8_t* bytes);
Encode encodeSsse3, encodeAvx2;
Decode decodeSsse3, decodeAvx2;

struct Path
{
    const char* name;
    bool (*isAvailable)();
    Encode* encode;
    Decode* decode;
};

/// The best path of this processor, or null.
SKYLUME_EXPORT const Path* bestPath();

/// Writes two digits for each byte. The bytes may be the last ones of the digits' buffer: each is read in
/// time.
SKYLUME_EXPORT void encode(const Path* path, const std::uint8_t* bytes, std::size_t size, char* digits);

/// Writes (length + 1) / 2 bytes. The place of a digit decides where its value goes; a character that is no
/// digit, and the missing last one of an odd number, counts as 0.
SKYLUME_EXPORT void decode(const Path* path, const char* digits, std::size_t length, std::uint8_t* bytes);

} // namespace Hex
