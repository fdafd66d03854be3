#pragma once

#include "common/ciphers/Base64Tables_p.h"
#include "common/ciphers/Base64_p.h"
#include "common/ciphers/Vectors_ssse3_p.h"

namespace {

/// The number of bytes that encodeEnd() and decodeEnd() process: eight groups.
inline constexpr std::size_t EndSize = 24;

/// Converts twelve bytes to sixteen characters, and back, in every lane of a vector.
template <typename Vectors>
class Base64Vectors
{
    using Bytes = typename Vectors::Bytes;
    using Words = typename Vectors::Words;
    using DoubleWords = typename Vectors::DoubleWords;

    static constexpr std::size_t Groups = 4 * Vectors::Lanes; ///< in one step
    /// A step accesses four bytes beyond its groups, and encodeEnd() or decodeEnd() does the last eight groups.
    static constexpr std::size_t LeastSize = 3 * Groups + 4 > EndSize ? 3 * Groups + 4 : EndSize + 1;

public:
    /// Encodes as many groups as possible in whole steps. Not inlined, because this would slow down short strings.
    /// @param done the number of groups that are already encoded
    /// @return the number of groups that are encoded now
    [[gnu::noinline]] static std::size_t encode(const std::uint8_t* bytes, std::size_t size,
                                                std::uint8_t* text, std::size_t done)
    {
        for (; size - 3 * done >= LeastSize; done += Groups) {
            const Bytes twelves = Vectors::loadTwelves(bytes + 3 * done);
            Vectors::store(text + 4 * done, characters(sixBits(twelves, table(Base64Groups::tables.spread))));
        }
        return done;
    }

    /// Decodes likewise. From the first character outside the alphabet on, a slower loop is used that has no
    /// branches to mispredict.
    [[gnu::noinline]] static std::size_t decode(const std::uint8_t* text, std::uint8_t* bytes,
                                                std::size_t size, std::size_t done)
    {
        for (; size - 3 * done >= LeastSize + 3 * Groups; done += 2 * Groups) {
            const Bytes first = Vectors::load(text + 4 * done),
                        second = Vectors::load(text + 4 * (done + Groups));
            if (Vectors::hasAny(foreignIn(first) | foreignIn(second)))
                break;
            Vectors::storeTwelves(bytes + 3 * done, packed(joined(valuesOf(first))));
            Vectors::storeTwelves(bytes + 3 * (done + Groups), packed(joined(valuesOf(second))));
        }
        for (; size - 3 * done >= LeastSize; done += Groups) {
            const Bytes code = Vectors::load(text + 4 * done);
            Vectors::storeTwelves(bytes + 3 * done, packed(joinedKnown(valuesOf(code), ~foreignIn(code))));
        }
        return done;
    }

    /// Encodes the last eight groups, or all if there are fewer: four from each end, which may overlap. The last
    /// group may be incomplete.
    /// @param size number of bytes in total, at least VectorSize
    static void encodeEnd(const std::uint8_t* bytes, std::size_t size, std::uint8_t* text)
    {
        const std::size_t groups = (size + 2) / 3, first = groups > 8 ? groups - 8 : 0;
        const auto& end = Base64Groups::tables.encodingAtEnd[3 * groups - size];
        const std::uint8_t* const parts[] = {bytes + size - 16, bytes + 3 * first};
        __m128i done[2];
#pragma GCC unroll 2
        for (std::size_t part = 0; part < 2; part += Vectors::Lanes) {
            const Bytes values = sixBits(Vectors::loadLanes(parts + part), table(end.spread, part));
            Vectors::split(characters(values) + table(end.padding, part), done + part);
        }
        Vectors128::storeWhole(text + 4 * first, done[1]);
        Vectors128::storeWhole(text + 4 * groups - 16, done[0]);
    }

    /// Decodes likewise. A "=" in the last group stands for 0.
    static void decodeEnd(const std::uint8_t* text, std::uint8_t* bytes, std::size_t size)
    {
        const std::size_t groups = (size + 2) / 3, first = groups > 8 ? groups - 8 : 0;
        const Base64Groups::Lanes& packing = Base64Groups::tables.packingAtEnd[3 * groups - size];
        const std::uint8_t* const parts[] = {text + 4 * groups - 16, text + 4 * first};
        __m128i done[2];
#pragma GCC unroll 2
        for (std::size_t part = 0; part < 2; part += Vectors::Lanes) {
            const Bytes code = Vectors::loadLanes(parts + part);
            const Bytes padding = Bytes(code == table(Base64Groups::tables.equals));
            const DoubleWords values = joinedAny(code + (padding & table(Base64Groups::tables.fromEquals)));
            Vectors::split(Vectors::shuffle(Bytes(values), table(packing, part)), done + part);
        }
        Vectors128::storeWhole(bytes + size - 16, done[0]); // the surplus bytes are overwritten next
        Vectors128::storeTwelve(bytes + 3 * first, done[1]);
    }

private:
    /// @param lane the first lane to load
    static Bytes table(const Base64Groups::Lanes& lanes, std::size_t lane = 0)
    {
        return Vectors::load(lanes.bytes + 16 * lane);
    }

    /// Splits each group of three bytes into four values of six bits, one in each byte. Multiplications do the
    /// shifting.
    static Bytes sixBits(Bytes twelves, Bytes spreads)
    {
        const Bytes spread = Vectors::shuffle(twelves, spreads);
        const Words even = Words(spread & table(Base64Groups::tables.evenValues));
        const Words odd = Words(spread & table(Base64Groups::tables.oddValues));
        return Bytes(Vectors::multipliedHigh(even, Words(table(Base64Groups::tables.evenFactors))) |
                     odd * Words(table(Base64Groups::tables.oddFactors)));
    }

    static Bytes characters(Bytes values)
    {
        const Bytes capitals = Vectors::below(values, table(Base64Groups::tables.capitals));
        const Bytes place = Vectors::reduced(values, table(Base64Groups::tables.letters)) |
                            (capitals & table(Base64Groups::tables.placeOfCapitals));
        return values + Vectors::shuffle(table(Base64Groups::tables.characterOffset), place);
    }

    static Bytes highHalves(Bytes code)
    {
        return Bytes(Words(code) >> 4) & table(Base64Groups::tables.lowHalf);
    }

    /// All ones for characters outside the alphabet.
    static Bytes foreignIn(Bytes code)
    {
        const Bytes rows = Vectors::shuffle(table(Base64Groups::tables.rowsOfLowHalf), code);
        const Bytes row = Vectors::shuffle(table(Base64Groups::tables.rowOfHighHalf), highHalves(code));
        return Bytes((rows & row) == 0);
    }

    static Bytes valuesOf(Bytes code)
    {
        const Bytes place =
            highHalves(code) + Bytes(code == table(Base64Groups::tables.slash)); // subtracts 1 for "/"
        return code + Vectors::shuffle(table(Base64Groups::tables.valueOffset), place);
    }

    /// Joins each four values of six bits into one of 24.
    static DoubleWords joined(Bytes values)
    {
        const Words pairs = Vectors::multipliedPairs(values, table(Base64Groups::tables.pairFactors));
        return Vectors::multipliedPairs(pairs, Words(table(Base64Groups::tables.groupFactors)));
    }

    /// The same with characters outside the alphabet, which are skipped: they cause no shift of the values before
    /// them, so the factor is 1 instead of 64.
    static DoubleWords joinedKnown(Bytes values, Bytes known)
    {
        const Words factors = ((Words(known) >> 8) & 0x3f) + 0x0101;
        const Words pairs = Vectors::multipliedPairs(values & known, Bytes(factors));
        const Words shifts = Words((known & 0x3f) + 1);
        const Words pairShifts = (shifts & 0xff) * (shifts >> 8);
        const DoubleWords pairFactors = (DoubleWords(pairShifts) >> 16) | 0x00010000;
        return Vectors::multipliedPairs(pairs, Words(pairFactors));
    }

    static DoubleWords joinedAny(Bytes code)
    {
        const Bytes foreign = foreignIn(code);
        if (__builtin_expect(Vectors::hasAny(foreign), false))
            return joinedKnown(valuesOf(code), ~foreign);
        return joined(valuesOf(code));
    }

    /// Packs the three bytes of each group, twelve in each lane.
    static Bytes packed(DoubleWords groups)
    {
        return Vectors::shuffle(Bytes(groups), table(Base64Groups::tables.firstThree));
    }
};

} // namespace
