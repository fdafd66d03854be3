#include "common/ciphers/TripleDes.h"

#include "common/ciphers/TripleDes_p.h"

namespace {

using namespace TripleDesRounds;

constexpr int KeyGroups = 8; ///< of seven bits, both in a key and in the two registers together

/// A permutation, with one entry for each value of each group of seven bits. The permuted word is the
/// combination of the entries of its groups.
struct GroupTables
{
    std::uint64_t ofGroup[KeyGroups][128];
};

/// PC-1: from a byte of the key without its parity bit to the two registers, C in the upper 28 of 56 bits.
constexpr GroupTables registerTables()
{
    GroupTables tables{};
    for (int to = 0; to < 56; ++to) {
        const int from = DesStandard::KeyChoice1[to] - 1;
        for (unsigned bits = 0; bits < 128; ++bits) {
            const std::uint64_t bit = bits >> (6 - from % 8) & 1;
            tables.ofGroup[from / 8][bits] |= bit << (55 - to);
        }
    }
    return tables;
}

/// PC-2: from a group of the registers, the uppermost first, to a round key in the layout of expanded
/// half-blocks.
constexpr GroupTables roundKeyTables()
{
    GroupTables tables{};
    for (int byte = 0; byte < 8; ++byte) {
        for (int place = 0; place < 6; ++place) {
            const int from = DesStandard::KeyChoice2[6 * BoxOfByte[byte] + place] - 1;
            for (unsigned bits = 0; bits < 128; ++bits) {
                const std::uint64_t bit = bits >> (6 - from % 7) & 1;
                tables.ofGroup[from / 7][bits] |= bit << (8 * byte + 5 - place);
            }
        }
    }
    return tables;
}

constexpr GroupTables Registers = registerTables();
constexpr GroupTables RoundKeys = roundKeyTables();

/// Two copies of a register, one behind the other: the register rotated by n starts n bits below the top.
struct Register
{
    explicit Register(std::uint64_t bits)
        : m_twice(bits << 28 | bits)
    {
    }

    unsigned group(unsigned rotation, unsigned index) const
    {
        return m_twice >> (49 - rotation - 7 * index) & 0x7f;
    }

    std::uint64_t m_twice;
};

std::uint64_t roundKeyOf(const Register& c, const Register& d, unsigned rotation)
{
    std::uint64_t key = 0;
    for (unsigned i = 0; i < KeyGroups / 2; ++i) {
        key |= RoundKeys.ofGroup[i][c.group(rotation, i)];
        key |= RoundKeys.ofGroup[KeyGroups / 2 + i][d.group(rotation, i)];
    }
    return key;
}

/// Expands one DES key, in the order for encryption and in reverse for decryption.
void expandKey(const unsigned char* key, std::uint32_t* encrypt, std::uint32_t* decrypt)
{
    std::uint64_t registers = 0;
    for (int i = 0; i < KeyGroups; ++i)
        registers |= Registers.ofGroup[i][key[i] >> 1];
    const Register c(registers >> 28);
    const Register d(registers & 0xfffffff);

    unsigned rotation = 0;
#pragma GCC unroll 16 // makes all shift counts constants
    for (std::size_t round = 0; round < 16; ++round) {
        rotation += DesStandard::KeyRotations[round];
        const std::uint64_t roundKey = roundKeyOf(c, d, rotation);
        std::memcpy(encrypt + 2 * round, &roundKey, sizeof roundKey);
        std::memcpy(decrypt + 2 * (15 - round), &roundKey, sizeof roundKey);
    }
}

void processBlock(const unsigned char* in, const std::uint32_t (&words)[3][32], unsigned char* out)
{
    Halves block[] = {load(in)};
    threeDes(block, words);
    store(block[0], out);
}

} // namespace

void des3_key_setup(const unsigned char* key, Des3Schedule* schedule)
{
    if (!key || !schedule)
        return;
    expandKey(key, schedule->encrypt[0], schedule->decrypt[2]);
    expandKey(key + 8, schedule->decrypt[1], schedule->encrypt[1]);
    expandKey(key + 16, schedule->encrypt[2], schedule->decrypt[0]);
}

void des3_encrypt(const unsigned char* plain, const Des3Schedule* schedule, unsigned char* crypt)
{
    if (plain && schedule && crypt)
        processBlock(plain, schedule->encrypt, crypt);
}

void des3_decrypt(const unsigned char* crypt, const Des3Schedule* schedule, unsigned char* plain)
{
    if (crypt && schedule && plain)
        processBlock(crypt, schedule->decrypt, plain);
}
