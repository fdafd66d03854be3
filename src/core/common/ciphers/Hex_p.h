#pragma once

#include "skylume_export.h"

#include <cstddef>
#include <cstdint>

/// Hexadecimal digits, two for each byte, upper case when written.
namespace Hex {

/// Encode or decode as many of the first bytes as suit the instruction set; the caller does the rest. Nothing
/// else is read or written, and bytes are read before their digits are written.
/// @return the number of bytes encoded or decoded
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

/// The fastest implementation for this processor; null for the portable one.
SKYLUME_EXPORT const Path* bestPath();

/// Writes two digits for each byte. The bytes may be at the end of the digits' buffer.
SKYLUME_EXPORT void encode(const Path* path, const std::uint8_t* bytes, std::size_t size, char* digits);

/// Writes (length + 1) / 2 bytes. Each character stands for four bits at its place; those that are not digits,
/// and the missing one of an odd length, stand for 0.
SKYLUME_EXPORT void decode(const Path* path, const char* digits, std::size_t length, std::uint8_t* bytes);

} // namespace Hex
