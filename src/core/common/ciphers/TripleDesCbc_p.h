#pragma once

#include "common/ciphers/TripleDes.h"

#include <cstddef>
#include <cstdint>

/// Triple DES in cipher-block-chaining mode over whole blocks of eight bytes. Input and output may be the
/// same buffer but must not overlap otherwise. The chaining block goes in and comes out, so that calls
/// continue one chain.
namespace TripleDesCbc {

/// One block after the other: each depends on the one before it.
void encrypt(const Des3Schedule& schedule, unsigned char* chain, const unsigned char* plain,
             unsigned char* crypt, std::size_t blocks);

/// In the best way for so many blocks.
void decrypt(const Des3Schedule& schedule, unsigned char* chain, const unsigned char* crypt,
             unsigned char* plain, std::size_t blocks);

/// Deciphers with the tables of the block cipher, a few blocks at a time.
SKYLUME_EXPORT void decryptByTables(const Des3Schedule& schedule, unsigned char* chain,
                                    const unsigned char* crypt, unsigned char* plain, std::size_t blocks);

/// The round keys bit by bit: all ones or all zeros for each of the 48 bits that enter the S-boxes in each of
/// the 48 rounds, in the standard's order.
struct KeyBits
{
    std::uint32_t masks[48][48];
};

/// Deciphers many blocks at once, each in a bit of every vector (BitslicedDes_p.h).
using Bitsliced = void(const KeyBits& key, unsigned char* chain, const unsigned char* crypt,
                       unsigned char* plain, std::size_t blocks);
Bitsliced bitslicedSse2, bitslicedAvx2, bitslicedAvx512;

struct Path
{
    const char* name;
    bool (*isAvailable)();
    std::size_t fewestBlocks; ///< from how many blocks it is faster than the tables
    Bitsliced* decrypt;
};

SKYLUME_EXPORT void decryptBitsliced(const Path& path, const Des3Schedule& schedule, unsigned char* chain,
                                     const unsigned char* crypt, unsigned char* plain, std::size_t blocks);

} // namespace TripleDesCbc
