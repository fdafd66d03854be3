#pragma once

#include "skylume_export.h"

#include <cstddef>
#include <cstdint>

/// Base64 in groups of three bytes and four characters. The last one may have fewer bytes; its text then ends
/// with "=".
namespace Base64Groups {

constexpr char Alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

/// Encodes VectorSize bytes or more. Nothing is read or written outside the buffers.
using Encode = void(const std::uint8_t* bytes, std::size_t size, std::uint8_t* text);
/// Decodes to VectorSize bytes or more. Every group has four characters; a "=" in the last one stands for 0.
using Decode = void(const std::uint8_t* text, std::uint8_t* bytes, std::size_t size);
constexpr std::size_t VectorSize = 16;
Encode encodeSsse3, encodeAvx2;
Decode decodeSsse3, decodeAvx2;

struct Path
{
    const char* name;
    bool (*isAvailable)();
    Encode* encode;
    Decode* decode;
};

/// Use an implementation, or go byte by byte if it is null or the input too short for it.
SKYLUME_EXPORT void encode(const Path* path, const std::uint8_t* bytes, std::size_t size, std::uint8_t* text);
SKYLUME_EXPORT void decode(const Path* path, const std::uint8_t* text, std::uint8_t* bytes, std::size_t size);

} // namespace Base64Groups
