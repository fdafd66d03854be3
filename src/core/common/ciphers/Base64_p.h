#pragma once

#include "skylume_export.h"

#include <cstddef>
#include <cstdint>

/// Base64 in groups of three bytes and four characters. The last one may have fewer bytes; its text then ends
/// with "=".
namespace Base64Groups {

constexpr char Alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

/// Encodes groups from the first on, as many as suit the instruction set; the others are left to the caller,
/// as is the padding. Nothing is read or written outside the bytes and the groups.
/// @return the number of groups that are done
using Encode = std::size_t(const std::uint8_t* bytes, std::size_t size, std::uint8_t* text);
/// Decodes likewise. Every group has four characters; a "=" among them counts as 0.
using Decode = std::size_t(const std::uint8_t* text, std::uint8_t* bytes, std::size_t size);
Encode encodeSsse3, encodeAvx2;
Decode decodeSsse3, decodeAvx2;

struct Path
{
    const char* name;
    bool (*isAvailable)();
    Encode* encode;
    Decode* decode;
};

/// Everything, by a path (or null) and what it leaves over one by one.
SKYLUME_EXPORT void encode(const Path* path, const std::uint8_t* bytes, std::size_t size, std::uint8_t* text);
SKYLUME_EXPORT void decode(const Path* path, const std::uint8_t* text, std::uint8_t* bytes, std::size_t size);

} // namespace Base64Groups
