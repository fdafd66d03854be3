#pragma once

#include "skylume_global.h"

#include <cstddef>
#include <cstdint>

/// Base64 in groups: three bytes and four characters, none of them a "=".
namespace Base64Groups {

constexpr char Alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

/// Encodes or decodes groups from the first on, as many as suit the instruction set; the others are left to the caller.
/// Writes and reads nothing outside the groups.
/// @return the number of groups that are done
using Encode = std::size_t(const std::uint8_t* bytes, std::size_t groups, std::uint8_t* text);
using Decode = std::size_t(const std::uint8_t* text, std::size_t groups, std::uint8_t* bytes);
Encode encodeSsse3, encodeAvx2;
Decode decodeSsse3, decodeAvx2;

struct Path
{
    const char* name;
    bool (*isAvailable)();
    Encode* encode;
    Decode* decode;
};

/// All groups, by a path (or null) and what it leaves over one by one.
SKYLUME_EXPORT void encode(const Path* path, const std::uint8_t* bytes, std::size_t groups,
                           std::uint8_t* text);
SKYLUME_EXPORT void decode(const Path* path, const std::uint8_t* text, std::size_t groups,
                           std::uint8_t* bytes);

} // namespace Base64Groups
