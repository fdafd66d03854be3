#pragma once

#include <immintrin.h>

#include <cstddef>
#include <cstdint>

namespace {

/// Vectors of 32 bytes, for the same code as Vectors128.
struct Vectors256
{
    static constexpr std::size_t Lanes = 2;
    using Bytes [[gnu::vector_size(32)]] = std::uint8_t;
    using Words [[gnu::vector_size(32)]] = std::uint16_t;
    using DoubleWords [[gnu::vector_size(32)]] = std::uint32_t;

    static __m128i loadHalf(const void* from) { return _mm_loadu_si128(static_cast<const __m128i*>(from)); }
    static void storeHalf(void* to, __m128i bytes) { _mm_storeu_si128(static_cast<__m128i*>(to), bytes); }

    static Bytes load(const void* from)
    {
        return Bytes(_mm256_loadu_si256(static_cast<const __m256i*>(from)));
    }
    static void store(void* to, Bytes bytes)
    {
        _mm256_storeu_si256(static_cast<__m256i*>(to), __m256i(bytes));
    }

    static Bytes repeat(const std::uint8_t* sixteen)
    {
        return Bytes(_mm256_broadcastsi128_si256(loadHalf(sixteen)));
    }

    static Bytes join(const void* first, const void* second)
    {
        return Bytes(_mm256_inserti128_si256(_mm256_castsi128_si256(loadHalf(first)), loadHalf(second), 1));
    }
    static Bytes loadLanes(const std::uint8_t* const* from) { return join(from[0], from[1]); }
    static void split(Bytes bytes, __m128i* lanes)
    {
        lanes[0] = _mm256_castsi256_si128(__m256i(bytes));
        lanes[1] = _mm256_extracti128_si256(__m256i(bytes), 1);
    }

    static Bytes loadTwelves(const std::uint8_t* from) { return join(from, from + 12); }
    static void storeTwelves(std::uint8_t* to, Bytes bytes)
    {
        storeHalf(to, _mm256_castsi256_si128(__m256i(bytes)));
        storeHalf(to + 12, _mm256_extracti128_si256(__m256i(bytes), 1));
    }

    static Words loadAsWords(const void* from) { return Words(_mm256_cvtepu8_epi16(loadHalf(from))); }
    static void storeAsBytes(void* to, Words words)
    {
        const __m256i packed = _mm256_packus_epi16(__m256i(words), __m256i(words));
        storeHalf(to, _mm256_castsi256_si128(_mm256_permute4x64_epi64(packed, 0x08)));
    }

    static Bytes shuffle(Bytes table, Bytes places)
    {
        return Bytes(_mm256_shuffle_epi8(__m256i(table), __m256i(places)));
    }
    static Words multipliedHigh(Words a, Words b)
    {
        return Words(_mm256_mulhi_epu16(__m256i(a), __m256i(b)));
    }
    static Words multipliedPairs(Bytes a, Bytes factors)
    {
        return Words(_mm256_maddubs_epi16(__m256i(a), __m256i(factors)));
    }
    static DoubleWords multipliedPairs(Words a, Words factors)
    {
        return DoubleWords(_mm256_madd_epi16(__m256i(a), __m256i(factors)));
    }
    static Bytes reduced(Bytes bytes, Bytes by)
    {
        return Bytes(_mm256_subs_epu8(__m256i(bytes), __m256i(by)));
    }
    static Bytes below(Bytes bytes, Bytes limits)
    {
        return Bytes(_mm256_cmpgt_epi8(__m256i(limits), __m256i(bytes)));
    }
    static bool hasAny(Bytes compared) { return _mm256_movemask_epi8(__m256i(compared)) != 0; }
};

} // namespace
