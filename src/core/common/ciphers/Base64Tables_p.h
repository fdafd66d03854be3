#pragma once

#include <cstdint>

namespace Base64Groups {

/// 16 bytes for each lane of a vector; vectors with one lane take the first or the second.
struct alignas(32) Lanes
{
    std::uint8_t bytes[32];
};

/// What vectors of bytes are shuffled by, masked with and multiplied by. They are in memory, and out of the
/// compiler's sight, since it would otherwise put most of them together anew in every call.
struct Tables
{
    // Bytes to values of six bits: each group's three bytes as two words, shifted by multiplications.
    Lanes spread;
    Lanes evenValues, evenFactors, oddValues, oddFactors;

    // Values to characters: an offset by the value less 51, but by 13 below 26 (and by 0 up to 51).
    Lanes capitals, letters, placeOfCapitals, characterOffset;

    // Characters to values. The alphabet is found by the two halves of a character: each upper half has a bit.
    Lanes lowHalf;
    Lanes rowsOfLowHalf; ///< the bits of all upper halves with which this lower half is in the alphabet
    Lanes rowOfHighHalf; ///< the bit of an upper half; none for those outside ASCII
    Lanes valueOffset;   ///< from a character to its value, by the upper half; by that less one for "/"
    Lanes slash;
    Lanes equals, fromEquals; ///< from "=" to the character of 0

    // Values of six bits to bytes.
    Lanes pairFactors, groupFactors, firstThree;

    // The end of a text: its last four groups, and the four before those or the first. By the number of bytes
    // that the last group lacks.
    struct
    {
        Lanes spread;  ///< of the last twelve bytes or fewer of 16; of the first twelve
        Lanes padding; ///< from the character of 0 to "="; zeros
    } encodingAtEnd[3];
    Lanes packingAtEnd[3]; ///< to the last bytes of 16; to the first
};

extern const Tables tables;

} // namespace Base64Groups
