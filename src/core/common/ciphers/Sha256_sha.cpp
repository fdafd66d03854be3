#include "common/ciphers/Sha256_p.h"

#include <immintrin.h>

namespace {

__m128i load(const void* bytes)
{
    return _mm_loadu_si128(static_cast<const __m128i*>(bytes));
}

void store(std::uint32_t* words, __m128i vector)
{
    _mm_storeu_si128(reinterpret_cast<__m128i*>(words), vector);
}

/// The state in the layout of the instructions: one vector of a, b, e, f and one of c, d, g, h, the first of
/// each in the highest place.
struct State
{
    __m128i abef, cdgh;

    explicit State(const std::uint32_t* words)
    {
        const __m128i badc = _mm_shuffle_epi32(load(words), 0xb1);
        const __m128i hgfe = _mm_shuffle_epi32(load(words + 4), 0x1b);
        abef = _mm_alignr_epi8(badc, hgfe, 8);
        cdgh = _mm_blend_epi16(hgfe, badc, 0xf0);
    }

    void save(std::uint32_t* words) const
    {
        const __m128i feba = _mm_shuffle_epi32(abef, 0x1b);
        const __m128i dchg = _mm_shuffle_epi32(cdgh, 0xb1);
        store(words, _mm_blend_epi16(feba, dchg, 0xf0));
        store(words + 4, _mm_alignr_epi8(dchg, feba, 8));
    }

    /// Four rounds. The instruction performs two with the lower half of its last argument; the vectors swap
    /// roles after it.
    void fourRounds(__m128i words, const std::uint32_t* constants)
    {
        const __m128i input = _mm_add_epi32(words, load(constants));
        cdgh = _mm_sha256rnds2_epu32(cdgh, abef, input);
        abef = _mm_sha256rnds2_epu32(abef, cdgh, _mm_shuffle_epi32(input, 0x0e));
    }
};

/// The four words of the message schedule that follow the sixteen given.
__m128i nextWords(__m128i oldest, __m128i old, __m128i recent, __m128i latest)
{
    const __m128i sevenBack = _mm_alignr_epi8(latest, recent, 4);
    return _mm_sha256msg2_epu32(_mm_add_epi32(_mm_sha256msg1_epu32(oldest, old), sevenBack), latest);
}

void compressBlock(State& state, const unsigned char* block)
{
    const __m128i bigEndian = _mm_set_epi64x(0x0c0d0e0f08090a0b, 0x0405060700010203);
    __m128i words[4];
    for (std::size_t i = 0; i < 4; ++i)
        words[i] = _mm_shuffle_epi8(load(block + 16 * i), bigEndian);
#pragma GCC unroll 16
    for (std::size_t i = 0; i < 16; ++i) {
        state.fourRounds(words[i & 3], K + 4 * i);
        if (i < 12)
            words[i & 3] =
                nextWords(words[i & 3], words[(i + 1) & 3], words[(i + 2) & 3], words[(i + 3) & 3]);
    }
}

} // namespace

void Sha256Blocks::compressSha(std::uint32_t* words, const unsigned char* blocks, std::size_t count)
{
    State state(words);
    for (; count > 0; --count, blocks += 64) {
        const State before = state;
        compressBlock(state, blocks);
        state.abef = _mm_add_epi32(state.abef, before.abef);
        state.cdgh = _mm_add_epi32(state.cdgh, before.cdgh);
    }
    state.save(words);
}
