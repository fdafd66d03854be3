#pragma once

#include "skylume_export.h"

#include <cstddef>
#include <cstdint>

/// Base64 in groups: three bytes and four characters, none of them a "=".
namespace Base64Groups {

constexpr char Alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

/// Encodes whole groups from the first on, as many as suit the instruction set; the others are left to the caller. All of
/// the bytes may be read, nothing is written outside the groups that are done.
/// @return the number of groups that are done
using Encode = std::size_t(const std::uint8_t* bytes, std::size_t size, std::uint8_t* text);
/// Decodes likewise. There must be at least four characters for every three bytes; all of the bytes may be written.
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

/// Everything, by a path (or null) and what it leaves over one by one; the last group of a text may hold padding.
SKYLUME_EXPORT void encode(const Path* path, const std::uint8_t* bytes, std::size_t size, std::uint8_t* text);
/// @param characters those before the first "="; padding takes the place of those that are missing
SKYLUME_EXPORT void decode(const Path* path, const std::uint8_t* text, std::size_t characters,
                           std::uint8_t* bytes, std::size_t size);

} // namespace Base64Groups
