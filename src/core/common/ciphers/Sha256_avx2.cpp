#include "common/ciphers/Sha256Rounds_p.h"
#include "common/ciphers/Sha256_p.h"
#include "common/ciphers/Wipe_p.h"

#include <immintrin.h>

namespace {

/// Four words of the message schedules of two blocks.
using Words [[gnu::vector_size(32)]] = std::uint32_t;
using Pairs [[gnu::vector_size(32)]] = std::uint64_t;

/// From the second word of `older` to the first of `newer`.
Words oneWordOn(Words older, Words newer)
{
    return Words(_mm256_alignr_epi8(__m256i(newer), __m256i(older), 4));
}

Words sigma0(Words x)
{
    return (x >> 7 ^ x << 25) ^ (x >> 18 ^ x << 14) ^ x >> 3;
}

/// Of two words, each given twice in a row: so shifts of 64 bits rotate. The result is in the even words.
Words sigma1(Words twice)
{
    return Words(Pairs(twice) >> 17) ^ Words(Pairs(twice) >> 19) ^ twice >> 10;
}

/// The schedule's words that follow the sixteen given; the last two of them depend on the first two.
Words nextWords(Words oldest, Words old, Words recent, Words latest)
{
    const Words sum = oldest + sigma0(oneWordOn(oldest, old)) + oneWordOn(recent, latest);
    const __m256i lastTwo = _mm256_shuffle_epi32(__m256i(latest), 0xfa);
    const __m256i toLower = _mm256_setr_epi8(0, 1, 2, 3, 8, 9, 10, 11, -1, -1, -1, -1, -1, -1, -1, -1, //
                                             0, 1, 2, 3, 8, 9, 10, 11, -1, -1, -1, -1, -1, -1, -1, -1);
    const __m256i toUpper = _mm256_setr_epi8(-1, -1, -1, -1, -1, -1, -1, -1, 0, 1, 2, 3, 8, 9, 10, 11, //
                                             -1, -1, -1, -1, -1, -1, -1, -1, 0, 1, 2, 3, 8, 9, 10, 11);
    const Words firstTwo = sum + Words(_mm256_shuffle_epi8(__m256i(sigma1(Words(lastTwo))), toLower));
    const __m256i newTwo = _mm256_shuffle_epi32(__m256i(firstTwo), 0x50);
    return firstTwo + Words(_mm256_shuffle_epi8(__m256i(sigma1(Words(newTwo))), toUpper));
}

Words loadWords(const unsigned char* first, const unsigned char* second)
{
    const auto half = [](const unsigned char* bytes) {
        return _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes));
    };
    const __m256i both = _mm256_inserti128_si256(_mm256_castsi128_si256(half(first)), half(second), 1);
    const __m256i bigEndian = _mm256_set_epi64x(0x0c0d0e0f08090a0b, 0x0405060700010203, //
                                                0x0c0d0e0f08090a0b, 0x0405060700010203);
    return Words(_mm256_shuffle_epi8(both, bigEndian));
}

Words constants(int round)
{
    return Words(_mm256_broadcastsi128_si256(_mm_loadu_si128(reinterpret_cast<const __m128i*>(K + round))));
}

/// The inputs of the rounds of two blocks: four of one and four of the other in turn.
struct alignas(32) Schedule
{
    Word inputs[16][2][4];

    ~Schedule() { Ciphers::wipe(inputs, sizeof inputs); }

    void fill(const unsigned char* first, const unsigned char* second)
    {
        Words words[4];
        for (std::size_t i = 0; i < 4; ++i)
            words[i] = loadWords(first + 16 * i, second + 16 * i);
        for (int i = 0; i < 16; i += 4) {
            for (int j = 0; j < 4; ++j) {
                const Words input = words[j] + constants(4 * (i + j));
                std::memcpy(inputs[i + j], &input, sizeof input);
                words[j] = nextWords(words[j], words[(j + 1) & 3], words[(j + 2) & 3], words[(j + 3) & 3]);
            }
        }
    }
};

void addBlock(Word* state, const Schedule& schedule, int which)
{
    Sha256Variables variables(state);
    for (int i = 0; i < 16; i += 4) {
#pragma GCC unroll 16
        for (int j = 0; j < 16; ++j)
            variables.round(j, schedule.inputs[i + j / 4][which][j % 4]);
    }
    variables.addTo(state);
}

} // namespace

void Sha256Blocks::compressAvx2(std::uint32_t* state, const unsigned char* blocks, std::size_t count)
{
    Schedule schedule;
    for (; count > 0; blocks += 128) {
        const bool isPair = count > 1;
        schedule.fill(blocks, isPair ? blocks + 64 : blocks);
        addBlock(state, schedule, 0);
        if (isPair)
            addBlock(state, schedule, 1);
        count -= isPair ? 2 : 1;
    }
}
