#pragma once

#include "common/ciphers/Sha256.h"

#include <cstring>

/// The arithmetic of SHA-256's rounds. Everything is private to the including file, since these files are
/// compiled for different processors.
namespace {

using Word = std::uint32_t;

inline Word rotated(Word word, int count)
{
    return word >> count | word << (32 - count);
}

/// The variables a to h. They are renamed from round to round instead of being moved.
struct Sha256Variables
{
    Word s[8];
    Word bXorC;

    explicit Sha256Variables(const Word* state)
    {
        std::memcpy(s, state, sizeof s);
        bXorC = s[1] ^ s[2];
    }

    void addTo(Word* state) const
    {
        for (int i = 0; i < 8; ++i)
            state[i] += s[i];
    }

    /// @param input the round's word of the message schedule plus its constant
    void round(int number, Word input)
    {
        const auto at = [this, number](int i) -> Word& {
            return s[(i - number) & 7];
        };
        const Word a = at(0), e = at(4);
        const Word choice = (e & at(5)) + (~e & at(6));
        const Word added = at(7) + input + (rotated(e, 6) ^ rotated(e, 11) ^ rotated(e, 25)) + choice;
        const Word aXorB = a ^ at(1); // the next round's b and c
        const Word majority = at(1) ^ (aXorB & bXorC);
        bXorC = aXorB;
        at(3) += added;
        at(7) = added + (rotated(a, 2) ^ rotated(a, 13) ^ rotated(a, 22)) + majority;
    }
};

} // namespace
