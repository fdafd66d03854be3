#include "common/ciphers/TripleDesCbc_p.h"

#include "common/ciphers/ProcessorPaths_p.h"
#include "common/ciphers/TripleDes_p.h"
#include "common/ciphers/Wipe_p.h"

using namespace TripleDesRounds;

namespace {

constexpr std::size_t BlockSize = 8;

std::uint64_t loadWord(const unsigned char* bytes)
{
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

/// Decrypts a few blocks at once and advances the pointers.
template <int Count>
void decryptSome(const Des3Schedule& schedule, std::uint64_t& chain, const unsigned char*& crypt,
                 unsigned char*& plain)
{
    Halves blocks[Count];
    std::uint64_t chained[Count];
    for (int i = 0; i < Count; ++i) {
        blocks[i] = load(crypt + BlockSize * i);
        chained[i] = chain;
        chain = loadWord(crypt + BlockSize * i);
    }
    threeDes(blocks, schedule.decrypt);
    for (int i = 0; i < Count; ++i) {
        store(blocks[i], plain + BlockSize * i);
        const std::uint64_t word = loadWord(plain + BlockSize * i) ^ chained[i];
        std::memcpy(plain + BlockSize * i, &word, BlockSize);
    }
    crypt += BlockSize * Count;
    plain += BlockSize * Count;
}

void spreadKey(const Des3Schedule& schedule, TripleDesCbc::KeyBits& key)
{
    for (std::size_t round = 0; round < 48; ++round) {
        const std::uint64_t word = roundKey(schedule.decrypt[round / 16], round % 16);
        for (int byte = 0; byte < 8; ++byte) {
            std::uint32_t* masks = &key.masks[round][std::size_t{6} * BoxOfByte[byte]];
            for (int place = 0; place < 6; ++place)
                masks[place] = -std::uint32_t(word >> (8 * byte + 5 - place) & 1);
        }
    }
}

} // namespace

void TripleDesCbc::encrypt(const Des3Schedule& schedule, unsigned char* chain, const unsigned char* plain,
                           unsigned char* crypt, std::size_t blocks)
{
    // The chaining block stays permuted and expanded: each block waits for the rounds of the previous one only.
    Halves chained = load(chain);
    for (std::size_t i = 0; i < blocks; ++i) {
        Halves block[] = {load(plain + BlockSize * i)};
        block[0].left ^= chained.left;
        block[0].right ^= chained.right;
        threeDes(block, schedule.encrypt);
        chained = block[0];
        store(chained, crypt + BlockSize * i);
    }
    store(chained, chain);
}

void TripleDesCbc::decryptByTables(const Des3Schedule& schedule, unsigned char* chain,
                                   const unsigned char* crypt, unsigned char* plain, std::size_t blocks)
{
    std::uint64_t chained = loadWord(chain);
    for (; blocks >= 3; blocks -= 3)
        decryptSome<3>(schedule, chained, crypt, plain);
    if (blocks == 2)
        decryptSome<2>(schedule, chained, crypt, plain);
    else if (blocks == 1)
        decryptSome<1>(schedule, chained, crypt, plain);
    std::memcpy(chain, &chained, BlockSize);
}

void TripleDesCbc::decryptBitsliced(const Path& path, const Des3Schedule& schedule, unsigned char* chain,
                                    const unsigned char* crypt, unsigned char* plain, std::size_t blocks)
{
    KeyBits key;
    spreadKey(schedule, key);
    path.decrypt(key, chain, crypt, plain, blocks);
    Ciphers::wipe(&key, sizeof key);
}

void TripleDesCbc::decrypt(const Des3Schedule& schedule, unsigned char* chain, const unsigned char* crypt,
                           unsigned char* plain, std::size_t blocks)
{
    static const Path* const bitsliced = ProcessorPaths::best(ProcessorPaths::tripleDes());
    if (bitsliced && blocks >= bitsliced->fewestBlocks)
        decryptBitsliced(*bitsliced, schedule, chain, crypt, plain, blocks);
    else
        decryptByTables(schedule, chain, crypt, plain, blocks);
}
