#pragma once

#include "common/ciphers/Base64_p.h"
#include "common/ciphers/Wipe_p.h"

#include <cstring>

namespace {

/// Where the characters of the alphabet are in the code, found by the two halves of a character.
struct CodeTables
{
    std::uint8_t
        rowsOfLowHalf[16]; ///< a bit for each upper half with which this lower half is in the alphabet
    std::uint8_t rowOfHighHalf[16]; ///< the bit of an upper half; none for those outside ASCII
    std::uint8_t
        valueOffset[16]; ///< from a character to its value, by the upper half; by that less one for "/"
};

constexpr CodeTables codeTables()
{
    CodeTables tables{};
    for (std::uint8_t value = 0; value < 64; ++value) {
        const auto code = static_cast<std::uint8_t>(Base64Groups::Alphabet[value]);
        const int row = code >> 4;
        tables.rowsOfLowHalf[code & 0xf] = std::uint8_t(tables.rowsOfLowHalf[code & 0xf] | 1 << row);
        tables.rowOfHighHalf[row] = std::uint8_t(1 << row);
        tables.valueOffset[code == '/' ? row - 1 : row] = std::uint8_t(value - code);
    }
    return tables;
}

constexpr CodeTables Code = codeTables();

/// From a value to its character: by the value less 51, but 13 for those below 26 (and 0 for those up to 51).
struct ValueTable
{
    std::uint8_t offset[16];
};

constexpr ValueTable valueTable()
{
    ValueTable table{};
    for (std::uint8_t value = 0; value < 64; ++value) {
        const int place = value < 26 ? 13 : value < 52 ? 0 : value - 51;
        table.offset[place] = std::uint8_t(Base64Groups::Alphabet[value] - value);
    }
    return table;
}

constexpr ValueTable Value = valueTable();

/// From memory, since compilers would make such a vector anew in every step.
constexpr std::uint8_t Slashes[16] = {'/', '/', '/', '/', '/', '/', '/', '/',
                                      '/', '/', '/', '/', '/', '/', '/', '/'};

/// From here on: the bytes from a place on, and zeros behind them.
constexpr std::uint8_t BytesFrom[32] = {0,    1,    2,    3,    4,    5,    6,    7,    8,    9,    10,
                                        11,   12,   13,   14,   15,   0x80, 0x80, 0x80, 0x80, 0x80, 0x80,
                                        0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80};

/// Twelve bytes to sixteen characters and back in every lane of a vector, for a set of vector operations.
template <typename Vectors>
class Base64Vectors
{
    using Bytes = typename Vectors::Bytes;
    using Words = typename Vectors::Words;
    using DoubleWords = typename Vectors::DoubleWords;

    static constexpr std::size_t Groups = 4 * Vectors::Lanes; ///< done in one step
    static constexpr std::size_t Touched = 3 * Groups + 4;    ///< bytes that a step reads or writes

public:
    static std::size_t encode(const std::uint8_t* bytes, std::size_t size, std::uint8_t* text)
    {
        std::size_t done = 0;
        for (; size - 3 * done >= Touched; done += Groups)
            Vectors::store(text + 4 * done, characters(sixBits(Vectors::loadTwelves(bytes + 3 * done))));
        return done;
    }

    /// Foreign characters cost time for the rest of the text, but no more than that: there is nothing to
    /// guess wrongly.
    static std::size_t decode(const std::uint8_t* text, std::uint8_t* bytes, std::size_t size)
    {
        std::size_t done = 0;
        for (; size - 3 * done >= Touched + 3 * Groups; done += 2 * Groups) {
            const Bytes first = Vectors::load(text + 4 * done),
                        second = Vectors::load(text + 4 * (done + Groups));
            if (Vectors::hasAny(foreignIn(first) | foreignIn(second)))
                break;
            Vectors::storeTwelves(bytes + 3 * done, joined(valuesOf(first)));
            Vectors::storeTwelves(bytes + 3 * (done + Groups), joined(valuesOf(second)));
        }
        for (; size - 3 * done >= Touched; done += Groups) {
            const Bytes code = Vectors::load(text + 4 * done);
            const Bytes known = ~foreignIn(code);
            Vectors::storeTwelves(bytes + 3 * done, joinedKnown(valuesOf(code) & known, known));
        }
        return done;
    }

    /// Goes on for vectors of 16 bytes up to the last group, which may lack bytes. The last step does four
    /// groups like all others, some of them once more. A text of less than a vector is left alone.
    static std::size_t encodeRest(const std::uint8_t* bytes, std::size_t size, std::uint8_t* text,
                                  std::size_t done)
    {
        const std::size_t groups = (size + 2) / 3;
        if (size < sizeof(Bytes))
            return done;
        while (done < groups) {
            const std::size_t first = done + Groups < groups ? done : groups - Groups;
            const std::size_t from = 3 * first + sizeof(Bytes) < size ? 3 * first : size - sizeof(Bytes);
            const Bytes places = Vectors::load(BytesFrom + (3 * first - from));
            const Bytes twelve = Vectors::shuffle(Vectors::load(bytes + from), places);
            Vectors::store(text + 4 * first, characters(sixBits(twelve)));
            done = first + Groups;
        }
        return done;
    }

    /// Likewise. In the last group a "=" takes the place of what is missing.
    static std::size_t decodeRest(const std::uint8_t* text, std::uint8_t* bytes, std::size_t size,
                                  std::size_t done)
    {
        const std::size_t groups = (size + 2) / 3;
        if (groups < Groups)
            return done;
        std::uint8_t decoded[sizeof(Bytes)];
        while (done < groups) {
            const std::size_t first = done + Groups < groups ? done : groups - Groups;
            Bytes code = Vectors::load(text + 4 * first);
            code += Bytes(code == '=') & ('A' - '=');
            Vectors::store(decoded, decodedAny(code));
            const std::size_t count = size - 3 * first < 12 ? size - 3 * first : 12;
            std::memcpy(bytes + 3 * first, decoded, 8); // there are 10 to 12
            std::memcpy(bytes + 3 * first + count - 4, decoded + count - 4, 4);
            done = first + Groups;
        }
        Ciphers::wipe(decoded, sizeof decoded);
        return done;
    }

private:
    static Bytes decodedAny(Bytes code)
    {
        const Bytes foreign = foreignIn(code), values = valuesOf(code);
        return Vectors::hasAny(foreign) ? joinedKnown(values & ~foreign, ~foreign) : joined(values);
    }

    /// Each group of three bytes as four values of six bits, one in each byte. Multiplications are the
    /// shifts.
    static Bytes sixBits(Bytes twelves)
    {
        constexpr std::uint8_t Spread[16] = {1, 0, 2, 1, 4, 3, 5, 4, 7, 6, 8, 7, 10, 9, 11, 10};
        const Bytes spread = Vectors::shuffle(twelves, Vectors::repeat(Spread));
        const Words evenValues = Words(DoubleWords(spread) & 0x0fc0fc00);
        const Words oddValues = Words(DoubleWords(spread) & 0x003f03f0);
        return Bytes(Vectors::multipliedHigh(evenValues, Words(DoubleWords{} + 0x04000040)) |
                     oddValues * Words(DoubleWords{} + 0x01000010));
    }

    static Bytes characters(Bytes values)
    {
        const Bytes place = Vectors::reduced(values, 51) | (Vectors::below(values, 26) & 13);
        return values + Vectors::shuffle(Vectors::repeat(Value.offset), place);
    }

    static Bytes highHalves(Bytes code) { return Bytes(Words(code) >> 4) & 0x0f; }

    /// All ones for characters outside the alphabet.
    static Bytes foreignIn(Bytes code)
    {
        const Bytes rows = Vectors::shuffle(Vectors::repeat(Code.rowsOfLowHalf), code);
        const Bytes row = Vectors::shuffle(Vectors::repeat(Code.rowOfHighHalf), highHalves(code));
        return Bytes((rows & row) == 0);
    }

    static Bytes valuesOf(Bytes code)
    {
        const Bytes place = highHalves(code) + Bytes(code == Vectors::repeat(Slashes)); // all ones are -1
        return code + Vectors::shuffle(Vectors::repeat(Code.valueOffset), place);
    }

    /// Four values of six bits as three bytes, twelve in each lane.
    static Bytes joined(Bytes values)
    {
        const Words pairs = Vectors::multipliedPairs(values, Bytes(Words{} + 0x0140));
        return packed(Vectors::multipliedPairs(pairs, Words(DoubleWords{} + 0x00011000)));
    }

    /// The same, but what comes before a foreign character is shifted once less: its factor is 1 instead of
    /// 64.
    static Bytes joinedKnown(Bytes values, Bytes known)
    {
        const Words factors = ((Words(known) >> 8) & 0x3f) + 0x0101;
        const Words pairs = Vectors::multipliedPairs(values, Bytes(factors));
        const Words shifts = Words((known & 0x3f) + 1);
        const Words pairShifts = (shifts & 0xff) * (shifts >> 8);
        const DoubleWords pairFactors = (DoubleWords(pairShifts) >> 16) | 0x00010000;
        return packed(Vectors::multipliedPairs(pairs, Words(pairFactors)));
    }

    static Bytes packed(DoubleWords groups)
    {
        constexpr std::uint8_t FirstThree[16] = {2, 1,  0,  6,  5,    4,    10,   9,
                                                 8, 14, 13, 12, 0x80, 0x80, 0x80, 0x80};
        return Vectors::shuffle(Bytes(groups), Vectors::repeat(FirstThree));
    }
};

} // namespace
