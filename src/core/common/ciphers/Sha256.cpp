#include "common/ciphers/Sha256.h"

#include "common/ciphers/BigEndian_p.h"
#include "common/ciphers/ProcessorPaths_p.h"
#include "common/ciphers/Sha256Rounds_p.h"
#include "common/ciphers/Sha256_p.h"
#include "common/ciphers/Wipe_p.h"

#include <algorithm>

alignas(64) const std::uint32_t K[64] = {
    0x428a2f98, 0x71374491, 0xb5c0fbcf, 0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5, //
    0xd807aa98, 0x12835b01, 0x243185be, 0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174, //
    0xe49b69c1, 0xefbe4786, 0x0fc19dc6, 0x240ca1cc, 0x2de92c6f, 0x4a7484aa, 0x5cb0a9dc, 0x76f988da, //
    0x983e5152, 0xa831c66d, 0xb00327c8, 0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967, //
    0x27b70a85, 0x2e1b2138, 0x4d2c6dfc, 0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85, //
    0xa2bfe8a1, 0xa81a664b, 0xc24b8b70, 0xc76c51a3, 0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070, //
    0x19a4c116, 0x1e376c08, 0x2748774c, 0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f, 0x682e6ff3, //
    0x748f82ee, 0x78a5636f, 0x84c87814, 0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2};

namespace {

constexpr std::size_t BlockSize = sizeof(Sha256Context::block);
constexpr std::size_t LengthPlace = BlockSize - sizeof(std::uint64_t);

void compress(Sha256Context* context, const unsigned char* blocks, std::size_t count)
{
    static const auto* const path = ProcessorPaths::best(ProcessorPaths::sha256());
    static Sha256Blocks::Compress* const best = path ? path->compress : Sha256Blocks::compressPortable;
    best(context->state, blocks, count);
}

Word sigma0(Word word)
{
    return rotated(word, 7) ^ rotated(word, 18) ^ word >> 3;
}

Word sigma1(Word word)
{
    return rotated(word, 17) ^ rotated(word, 19) ^ word >> 10;
}

/// Sixteen rounds. `words` are the latest sixteen of the message schedule; when extending, each is replaced
/// before it is used.
template <bool Extend>
void sixteenRounds(Sha256Variables& variables, Word (&words)[16], const Word* constants)
{
#pragma GCC unroll 16
    for (int i = 0; i < 16; ++i) {
        if (Extend)
            words[i] += sigma1(words[(i + 14) & 15]) + words[(i + 9) & 15] + sigma0(words[(i + 1) & 15]);
        variables.round(i, words[i] + constants[i]);
    }
}

} // namespace

void Sha256Blocks::compressPortable(std::uint32_t* state, const unsigned char* blocks, std::size_t count)
{
    Word words[16];
    for (; count > 0; --count, blocks += BlockSize) {
        Sha256Variables variables(state);
        for (std::size_t i = 0; i < 16; ++i)
            words[i] = Ciphers::loadBigEndian(blocks + 4 * i);
        sixteenRounds<false>(variables, words, K);
        for (int round = 16; round < 64; round += 16)
            sixteenRounds<true>(variables, words, K + round);
        variables.addTo(state);
    }
    Ciphers::wipe(words, sizeof words);
}

void Sha256_Init(Sha256Context* context)
{
    if (!context)
        return;
    *context = {
        {0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a, 0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19},
        0,
        {}};
}

void Sha256_Update(Sha256Context* context, const unsigned char* data, std::size_t size)
{
    if (!context || !data)
        return;
    const std::size_t kept = context->length % BlockSize;
    context->length += size;
    if (kept > 0) {
        const std::size_t taken = std::min(size, BlockSize - kept);
        std::copy_n(data, taken, context->block + kept);
        if (kept + taken < BlockSize)
            return;
        compress(context, context->block, 1);
        data += taken;
        size -= taken;
    }
    if (size >= BlockSize)
        compress(context, data, size / BlockSize);
    std::copy_n(data + size / BlockSize * BlockSize, size % BlockSize, context->block);
}

void Sha256_Final(Sha256Context* context, unsigned char* hashOut)
{
    if (!context || !hashOut)
        return;
    std::size_t kept = context->length % BlockSize;
    context->block[kept++] = 0x80;
    if (kept > LengthPlace) {
        std::fill(context->block + kept, context->block + BlockSize, 0);
        compress(context, context->block, 1);
        kept = 0;
    }
    std::fill(context->block + kept, context->block + LengthPlace, 0);
    const std::uint64_t bits = context->length * 8;
    Ciphers::storeBigEndian(Word(bits >> 32), context->block + LengthPlace);
    Ciphers::storeBigEndian(Word(bits), context->block + LengthPlace + sizeof(Word));
    compress(context, context->block, 1);
    for (std::size_t i = 0; i < 8; ++i)
        Ciphers::storeBigEndian(context->state[i], hashOut + 4 * i);
    Ciphers::wipe(context, sizeof *context);
}

int sha256(const unsigned char* data, unsigned int len, unsigned char* hashOut)
{
    if (!hashOut || !data || len == 0)
        return -1;
    Sha256Context context;
    Sha256_Init(&context);
    Sha256_Update(&context, data, len);
    Sha256_Final(&context, hashOut);
    return 0;
}
