#pragma once

#include <cstdint>

namespace Base64Groups {

struct alignas(16) Sixteen
{
    std::uint8_t bytes[16];
};

/// What vectors of bytes are shuffled by, masked with and multiplied by. They are in memory, and out of the
/// compiler's sight, since it would otherwise put most of them together anew in every call.
struct Tables
{
    // Bytes to values of six bits: each group's three bytes as two words, shifted by multiplications.
    Sixteen spread;
    struct
    {
        Sixteen spread;  ///< for the last twelve bytes or fewer of 16
        Sixteen padding; ///< from the character of 0 to "="
    } encodingAtEnd[3];  ///< by the number of bytes that the last group lacks
    Sixteen evenValues, evenFactors, oddValues, oddFactors;

    // Values to characters: an offset by the value less 51, but by 13 below 26 (and by 0 up to 51).
    Sixteen capitals, letters, placeOfCapitals, characterOffset;

    // Characters to values. The alphabet is found by the two halves of a character: each upper half has a bit.
    Sixteen lowHalf;
    Sixteen rowsOfLowHalf; ///< the bits of all upper halves with which this lower half is in the alphabet
    Sixteen rowOfHighHalf; ///< the bit of an upper half; none for those outside ASCII
    Sixteen valueOffset;   ///< from a character to its value, by the upper half; by that less one for "/"
    Sixteen slash;
    Sixteen equals, fromEquals; ///< from "=" to the character of 0

    // Values of six bits to bytes.
    Sixteen pairFactors, groupFactors, firstThree;
    Sixteen lastFour[3]; ///< the last four bytes of groups, by the number of bytes that the last one lacks
};

extern const Tables tables;

} // namespace Base64Groups
