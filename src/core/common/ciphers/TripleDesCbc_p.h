#pragma once

#include "common/ciphers/TripleDes.h"

#include <cstddef>
#include <cstdint>

/// Triple DES in cipher-block-chaining mode over whole blocks of eight bytes. Input and output may be the same
/// buffer but must not overlap otherwise. The chaining block is updated, so that calls continue one chain.
namespace TripleDesCbc {

/// One block after the other: each depends on the previous one.
void encrypt(const Des3Schedule& schedule, unsigned char* chain, const unsigned char* plain,
             unsigned char* crypt, std::size_t blocks);

/// Uses the fastest implementation for this number of blocks.
void decrypt(const Des3Schedule& schedule, unsigned char* chain, const unsigned char* crypt,
             unsigned char* plain, std::size_t blocks);

/// Decrypts with the tables of the block cipher, a few blocks at a time.
SKYLUME_EXPORT void decryptByTables(const Des3Schedule& schedule, unsigned char* chain,
                                    const unsigned char* crypt, unsigned char* plain, std::size_t blocks);

/// The round keys bit by bit, in the standard's order: a mask of ones or zeros for each of the 48 key bits of
/// each of the 48 rounds.
struct KeyBits
{
    std::uint32_t masks[48][48];
};

/// Decrypts many blocks at once (BitslicedDes_p.h).
using Bitsliced = void(const KeyBits& key, unsigned char* chain, const unsigned char* crypt,
                       unsigned char* plain, std::size_t blocks);
Bitsliced bitslicedSse2, bitslicedAvx2, bitslicedAvx512;

struct Path
{
    const char* name;
    bool (*isAvailable)();
    std::size_t fewestBlocks; ///< from this number on it is faster than the tables
    Bitsliced* decrypt;
};

SKYLUME_EXPORT void decryptBitsliced(const Path& path, const Des3Schedule& schedule, unsigned char* chain,
                                     const unsigned char* crypt, unsigned char* plain, std::size_t blocks);

} // namespace TripleDesCbc
