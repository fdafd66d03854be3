#pragma once

#include "common/ciphers/BigEndian_p.h"
#include "common/ciphers/DesStandard_p.h"
#include "common/ciphers/TripleDes.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

/// The rounds of DES on half-blocks that stay expanded.
///
/// A half-block is stored in 64 bits as the eight groups of six bits that E produces, one in each byte. The input
/// of the S-boxes is this word, exclusive-or'ed with the round key. The tables hold the output of the S-boxes
/// after P and after E of the next round, so nothing is permuted between the first round and the last.
namespace TripleDesRounds {

/// The S-box of each byte, from the lowest on. This order makes expansion cheap.
constexpr int BoxOfByte[8] = {7, 5, 3, 1, 0, 6, 4, 2};

constexpr std::uint32_t rotatedLeft(std::uint32_t word, unsigned count)
{
    return word << (count & 31) | word >> (-count & 31);
}

constexpr std::uint32_t rotatedRight(std::uint32_t word, unsigned count)
{
    return rotatedLeft(word, 32 - count);
}

/// E.
constexpr std::uint64_t expanded(std::uint32_t half)
{
    const std::uint64_t evenBoxes = rotatedLeft(half, 5);
    return (evenBoxes << 32 | rotatedLeft(half, 1)) & 0x3f3f3f3f3f3f3f3f;
}

/// The inverse: the inner four bits of each group.
constexpr std::uint32_t contracted(std::uint64_t word)
{
    constexpr std::uint32_t inner = 0x1e1e1e1e;
    return rotatedRight(std::uint32_t(word >> 32) & inner, 5) | rotatedRight(std::uint32_t(word) & inner, 1);
}

struct SubstitutionTables
{
    std::uint64_t ofByte[8][64];
};

/// P of the output of one S-box.
constexpr std::uint32_t permuted(int box, unsigned fourBits)
{
    const std::uint32_t before = fourBits << (28 - 4 * box);
    std::uint32_t after = 0;
    for (int bit = 0; bit < 32; ++bit)
        after |= (before >> (32 - DesStandard::Permutation[bit]) & 1) << (31 - bit);
    return after;
}

constexpr SubstitutionTables substitutionTables()
{
    SubstitutionTables tables{};
    for (int byte = 0; byte < 8; ++byte) {
        const int box = BoxOfByte[byte];
        for (unsigned bits = 0; bits < 64; ++bits)
            tables.ofByte[byte][bits] = expanded(permuted(box, DesStandard::substituted(box, bits)));
    }
    return tables;
}

alignas(64) inline constexpr SubstitutionTables Tables = substitutionTables();

/// A block between the initial and the final permutation.
struct Halves
{
    std::uint64_t left;
    std::uint64_t right;
};

/// Exchanges the bits of b under the mask with those of a that lie `shift` places higher.
inline void exchange(std::uint32_t& a, std::uint32_t& b, unsigned shift, std::uint32_t mask)
{
    const std::uint32_t difference = ((a >> shift) ^ b) & mask;
    b ^= difference;
    a ^= difference << shift;
}

/// The initial permutation, which transposes an 8 by 8 matrix of bits and sorts its rows, by exchanges.
inline Halves load(const unsigned char* block)
{
    std::uint32_t left = Ciphers::loadBigEndian(block);
    std::uint32_t right = Ciphers::loadBigEndian(block + 4);
    exchange(left, right, 4, 0x0f0f0f0f);
    exchange(left, right, 16, 0x0000ffff);
    exchange(right, left, 2, 0x33333333);
    exchange(right, left, 8, 0x00ff00ff);
    exchange(left, right, 1, 0x55555555);
    return {expanded(left), expanded(right)};
}

/// The final permutation: the exchanges of load() in reverse.
inline void store(const Halves& halves, unsigned char* block)
{
    std::uint32_t left = contracted(halves.left);
    std::uint32_t right = contracted(halves.right);
    exchange(left, right, 1, 0x55555555);
    exchange(right, left, 8, 0x00ff00ff);
    exchange(right, left, 2, 0x33333333);
    exchange(left, right, 16, 0x0000ffff);
    exchange(left, right, 4, 0x0f0f0f0f);
    Ciphers::storeBigEndian(left, block);
    Ciphers::storeBigEndian(right, block + 4);
}

/// A round key has the layout of an expanded half-block and takes two words of a schedule.
inline std::uint64_t roundKey(const std::uint32_t* words, std::size_t round)
{
    std::uint64_t key = 0;
    std::memcpy(&key, words + 2 * round, sizeof key);
    return key;
}

/// Keeps the compiler from regrouping the exclusive-ors: it does not know which operands are ready early.
inline void settle(std::uint64_t& word)
{
    __asm__("" : "+r"(word));
}

/// A half-block, exclusive-or'ed with the S-boxes' output for the other one. Each round waits for the previous
/// one, so latency decides: two short chains, each beginning with the operand that is ready first.
inline std::uint64_t substituted(std::uint64_t half, std::uint64_t groups)
{
    const auto& of = Tables.ofByte;
    const auto add = [groups, &of](std::uint64_t& sum, int byte) {
        sum ^= of[byte][groups >> (8 * byte) & 0xff];
        settle(sum);
    };
    std::uint64_t first = half;
    std::uint64_t second = of[2][groups >> 16 & 0xff];
    settle(second);
    add(first, 0);
    add(first, 1);
    add(second, 3);
    add(first, 4);
    add(first, 5);
    add(second, 6);
    add(second, 7);
    return first ^ second;
}

/// The rounds of one DES on several blocks at once, which hides the latency of the tables. The caller exchanges
/// the halves after the last round.
template <int Count>
inline void oneDes(std::uint64_t (&left)[Count], std::uint64_t (&right)[Count], const std::uint32_t* words)
{
    for (std::size_t round = 0; round < 16; round += 2) {
        const std::uint64_t first = roundKey(words, round);
        const std::uint64_t second = roundKey(words, round + 1);
        for (int i = 0; i < Count; ++i)
            left[i] = substituted(left[i], right[i] ^ first);
        for (int i = 0; i < Count; ++i)
            right[i] = substituted(right[i], left[i] ^ second);
    }
}

/// All 48 rounds. The inner two permutations of each block cancel out.
template <int Count>
inline void threeDes(Halves (&blocks)[Count], const std::uint32_t (&words)[3][32])
{
    std::uint64_t left[Count], right[Count];
    for (int i = 0; i < Count; ++i) {
        left[i] = blocks[i].left;
        right[i] = blocks[i].right;
    }
    oneDes(left, right, words[0]);
    oneDes(right, left, words[1]);
    oneDes(left, right, words[2]);
    for (int i = 0; i < Count; ++i)
        blocks[i] = {right[i], left[i]};
}

} // namespace TripleDesRounds
