#pragma once

#include <immintrin.h>

#include <cstddef>
#include <cstdint>

namespace {

/// Vectors of 16 bytes for code that is written once for several widths. Private to the files that include
/// it. The types have the usual operators for each element; a comparison gives all ones or all zeros.
struct Vectors128
{
    static constexpr std::size_t Lanes =
        1; ///< parts of 16 bytes that are shuffled and multiplied each by itself
    using Bytes [[gnu::vector_size(16)]] = std::uint8_t;
    using Words [[gnu::vector_size(16)]] = std::uint16_t;
    using DoubleWords [[gnu::vector_size(16)]] = std::uint32_t;

    static __m128i loadHalf(const void* from) { return _mm_loadl_epi64(static_cast<const __m128i*>(from)); }
    static __m128i loadWhole(const void* from) { return _mm_loadu_si128(static_cast<const __m128i*>(from)); }
    static void storeWhole(void* to, __m128i bytes) { _mm_storeu_si128(static_cast<__m128i*>(to), bytes); }

    static Bytes load(const void* from) { return Bytes(loadWhole(from)); }
    static void store(void* to, Bytes bytes) { storeWhole(to, __m128i(bytes)); }

    /// 16 bytes for each lane, each from a place of its own.
    static Bytes loadLanes(const std::uint8_t* const* from) { return load(*from); }
    /// The bytes of each lane.
    static void split(Bytes bytes, __m128i* lanes) { *lanes = __m128i(bytes); }

    static void storeTwelve(std::uint8_t* to, __m128i bytes)
    {
        _mm_storel_epi64(reinterpret_cast<__m128i*>(to), bytes);
        _mm_storeu_si32(to + 8, _mm_srli_si128(bytes, 8));
    }

    /// The same 16 bytes in every lane.
    static Bytes repeat(const std::uint8_t* sixteen) { return load(sixteen); }

    /// Twelve bytes for each lane; four more are read.
    static Bytes loadTwelves(const std::uint8_t* from) { return load(from); }
    /// Writes twelve bytes of each lane and four more.
    static void storeTwelves(std::uint8_t* to, Bytes bytes) { store(to, bytes); }

    /// Eight bytes for each lane, each as a word.
    static Words loadAsWords(const void* from)
    {
        return Words(_mm_unpacklo_epi8(loadHalf(from), _mm_setzero_si128()));
    }
    /// Writes the words, none above 255, as bytes.
    static void storeAsBytes(void* to, Words words)
    {
        _mm_storel_epi64(static_cast<__m128i*>(to), _mm_packus_epi16(__m128i(words), __m128i(words)));
    }

    /// The table's bytes at the places that the low four bits name; 0 where a place has its highest bit set.
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
    /// Each byte less another, but not less than 0.
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
