#pragma once

#include <cstdint>

namespace Base64Groups {

/// 16 bytes for each of two lanes. Vectors with a single lane load one of them.
struct alignas(32) Lanes
{
    std::uint8_t bytes[32];
};

/// Operands for shuffling, masking and multiplying vectors of bytes. They are defined in a separate file and loaded
/// from memory, because the compiler would otherwise compute most of them again in every call.
struct Tables
{
    // Bytes to values of six bits: the three bytes of a group form two words, which multiplications shift.
    Lanes spread;
    Lanes evenValues, evenFactors, oddValues, oddFactors;

    // Values to characters: an offset is added. Its index is 13 for values below 26, 0 for those up to 51, and the
    // value minus 51 for the rest.
    Lanes capitals, letters, placeOfCapitals, characterOffset;

    // Characters to values. A character is in the alphabet if the entries for its upper and lower four bits have a
    // common bit; each upper half has one bit.
    Lanes lowHalf;
    Lanes rowsOfLowHalf; ///< the bits of the upper halves that form a character of the alphabet with this one
    Lanes rowOfHighHalf; ///< the bit of this upper half; 0 outside ASCII
    Lanes valueOffset;   ///< value minus character, by upper half; for "/" by the upper half minus 1
    Lanes slash;
    Lanes equals, fromEquals; ///< the difference between "=" and the character for 0

    // Values of six bits to bytes.
    Lanes pairFactors, groupFactors, firstThree;

    // The end of a string: the first lane is for its last four groups, the second for four groups before these. The
    // index is the number of bytes that the last group lacks.
    struct
    {
        Lanes spread;  ///< of 16 bytes, those of the last four groups; the first twelve
        Lanes padding; ///< the difference between the character for 0 and "="; zeros
    } encodingAtEnd[3];
    Lanes packingAtEnd[3]; ///< to the end of 16 bytes; to their beginning
};

extern const Tables tables;

} // namespace Base64Groups
