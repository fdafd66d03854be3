#pragma once

#include <immintrin.h>

#include <cstddef>
#include <cstdint>

namespace {

/// Vectors of 16 bytes, for code that is written once for several vector sizes. Private to the including file. The
/// operators of the types work on each element; a comparison gives all ones or all zeros.
struct Vectors128
{
    static constexpr std::size_t Lanes = 1; ///< parts of 16 bytes that are shuffled independently
    using Bytes [[gnu::vector_size(16)]] = std::uint8_t;
    using Words [[gnu::vector_size(16)]] = std::uint16_t;
    using DoubleWords [[gnu::vector_size(16)]] = std::uint32_t;

    static __m128i loadHalf(const void* from) { return _mm_loadl_epi64(static_cast<const __m128i*>(from)); }
    static __m128i loadWhole(const void* from) { return _mm_loadu_si128(static_cast<const __m128i*>(from)); }
    static void storeWhole(void* to, __m128i bytes) { _mm_storeu_si128(static_cast<__m128i*>(to), bytes); }

    static Bytes load(const void* from) { return Bytes(loadWhole(from)); }
    static void store(void* to, Bytes bytes) { storeWhole(to, __m128i(bytes)); }

    /// Loads 16 bytes for each lane from separate addresses.
    static Bytes loadLanes(const std::uint8_t* const* from) { return load(*from); }
    /// Stores each lane separately.
    static void split(Bytes bytes, __m128i* lanes) { *lanes = __m128i(bytes); }

    static void storeTwelve(std::uint8_t* to, __m128i bytes)
    {
        _mm_storel_epi64(reinterpret_cast<__m128i*>(to), bytes);
        _mm_storeu_si32(to + 8, _mm_srli_si128(bytes, 8));
    }

    /// Loads the same 16 bytes into every lane.
    static Bytes repeat(const std::uint8_t* sixteen) { return load(sixteen); }

    /// Loads twelve bytes for each lane; reads four more.
    static Bytes loadTwelves(const std::uint8_t* from) { return load(from); }
    /// Stores twelve bytes of each lane; writes four more.
    static void storeTwelves(std::uint8_t* to, Bytes bytes) { store(to, bytes); }

    /// Loads eight bytes for each lane and extends them to words.
    static Words loadAsWords(const void* from)
    {
        return Words(_mm_unpacklo_epi8(loadHalf(from), _mm_setzero_si128()));
    }
    /// Stores words as bytes; none may be above 255.
    static void storeAsBytes(void* to, Words words)
    {
        _mm_storel_epi64(static_cast<__m128i*>(to), _mm_packus_epi16(__m128i(words), __m128i(words)));
    }

    /// Looks up each of the places, by its low four bits, in the table; 0 if its highest bit is set.
    static Bytes shuffle(Bytes table, Bytes places)
    {
        return Bytes(_mm_shuffle_epi8(__m128i(table), __m128i(places)));
    }
    static Words multipliedHigh(Words a, Words b) { return Words(_mm_mulhi_epu16(__m128i(a), __m128i(b))); }
    /// The sum of the two products in each word.
    static Words multipliedPairs(Bytes a, Bytes factors)
    {
        return Words(_mm_maddubs_epi16(__m128i(a), __m128i(factors)));
    }
    /// The sum of the two products in each double word.
    static DoubleWords multipliedPairs(Words a, Words factors)
    {
        return DoubleWords(_mm_madd_epi16(__m128i(a), __m128i(factors)));
    }
    /// Subtracts bytes; the result is at least 0.
    static Bytes reduced(Bytes bytes, Bytes by) { return Bytes(_mm_subs_epu8(__m128i(bytes), __m128i(by))); }
    /// All ones for bytes below their limits; none may be above 127.
    static Bytes below(Bytes bytes, Bytes limits)
    {
        return Bytes(_mm_cmplt_epi8(__m128i(bytes), __m128i(limits)));
    }
    /// Whether any element of a comparison's result is set.
    static bool hasAny(Bytes compared) { return _mm_movemask_epi8(__m128i(compared)) != 0; }
};

} // namespace
