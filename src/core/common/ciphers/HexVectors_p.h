#pragma once

#include "common/ciphers/Hex_p.h"

namespace {

/// Converts eight bytes and sixteen digits in each lane of a vector.
template <typename Vectors>
class HexVectors
{
    using Bytes = typename Vectors::Bytes;
    using Words = typename Vectors::Words;

    static constexpr std::size_t Step = 8 * Vectors::Lanes;

public:
    static std::size_t encode(const std::uint8_t* bytes, std::size_t size, char* digits)
    {
        constexpr std::uint8_t Digits[16] = {'0', '1', '2', '3', '4', '5', '6', '7',
                                             '8', '9', 'A', 'B', 'C', 'D', 'E', 'F'};
        std::size_t done = 0;
        for (; size - done >= Step; done += Step) {
            const Words words = Vectors::loadAsWords(bytes + done);
            const Bytes halves = Bytes(words >> 4 | words << 8) & 0x0f;
            Vectors::store(digits + 2 * done, Vectors::shuffle(Vectors::repeat(Digits), halves));
        }
        return done;
    }

    static std::size_t decode(const char* digits, std::size_t size, std::uint8_t* bytes)
    {
        std::size_t done = 0;
        for (; size - done >= Step; done += Step) {
            const Bytes values = valuesOf(Vectors::load(digits + 2 * done));
            Vectors::storeAsBytes(bytes + done, Vectors::multipliedPairs(values, Bytes(Words{} + 0x0110)));
        }
        return done;
    }

private:
    static Bytes valuesOf(Bytes code)
    {
        const Bytes number = code - '0';
        const Bytes letter = (code | 0x20) - 'a';
        return (number & Bytes(number < 10)) | ((letter + 10) & Bytes(letter < 6));
    }
};

} // namespace
