#pragma once

#include "common/ciphers/SboxCircuit_p.h"
#include "common/ciphers/TripleDesCbc_p.h"
#include "common/ciphers/Wipe_p.h"

#include <cstdint>
#include <cstring>
#include <utility>

/// Bit-sliced Triple DES: each of 64 vectors holds the same bit of many blocks, one block in each of its bits.
/// The code is compiled for each instruction set in a separate file, which defines the vectors and the gates:
///
///     struct InstructionSet
///     {
///         using Vector = ...;     // of 64-bit words
///         using WordVector = ...; // the same of 32-bit words
///         static constexpr auto Kind = SboxCircuit::Gates::...;
///         static constexpr auto& Recipes = SboxCircuit::...;
///         template <unsigned Table> static Vector gate(Vector a, Vector b, Vector c);
///     };
///
/// Such a type must be in an unnamed namespace, so that the linker does not use functions compiled for one
/// processor on another.
template <typename InstructionSet>
class BitslicedDes
{
public:
    /// Decrypts any number of blocks as TripleDesCbc::decrypt() does.
    static void decrypt(const TripleDesCbc::KeyBits& key, unsigned char* chain, const unsigned char* crypt,
                        unsigned char* plain, std::size_t blocks)
    {
        Batch batch;
        while (blocks > 0) {
            const std::size_t count = blocks < BatchBlocks ? blocks : BatchBlocks;
            const std::size_t size = BlockSize * count;
            if (count < BatchBlocks)
                std::memset(&batch, 0, sizeof batch);
            std::memcpy(batch.chained, chain, BlockSize);
            std::memcpy(reinterpret_cast<char*>(batch.chained) + BlockSize, crypt, size - BlockSize);
            std::memcpy(batch.matrix, crypt, size);
            std::memcpy(chain, crypt + size - BlockSize, BlockSize);
            decryptBatch(key, batch);
            std::memcpy(plain, batch.matrix, size);
            crypt += size;
            plain += size;
            blocks -= count;
        }
        Ciphers::wipe(&batch, sizeof batch);
    }

private:
    using Vector = typename InstructionSet::Vector;
    using WordVector = typename InstructionSet::WordVector;
    using Half = Vector[32];

    static constexpr std::size_t BlockSize = 8;
    static constexpr std::size_t BatchBlocks = 8 * sizeof(Vector);

    struct Batch
    {
        Vector matrix[64];  // blocks in rows, or their bits in rows
        Vector chained[64]; // the block before each
        Half left, right;
    };

    static void decryptBatch(const TripleDesCbc::KeyBits& key, Batch& batch)
    {
        transpose(batch.matrix);
        split(batch);
        const std::uint32_t(*roundKey)[48] = key.masks;
        for (int round = 0; round < 48; round += 2) {
            addRound(batch.left, batch.right, *roundKey++, Boxes());
            addRound(batch.right, batch.left, *roundKey++, Boxes());
            if (round == 14 || round == 30) // the next DES starts with the halves exchanged
                exchangeHalves(batch);
        }
        join(batch);
        transpose(batch.matrix);
        for (int i = 0; i < 64; ++i)
            batch.matrix[i] ^= batch.chained[i];
    }

    /// The place in a little-endian word of a bit of a block. The standard counts bits from 1, from the first
    /// byte and the most significant bit on.
    static constexpr int placeOfBit(int bit) { return (bit - 1) / 8 * 8 + 7 - (bit - 1) % 8; }

    static void split(Batch& batch)
    {
        for (int i = 0; i < 32; ++i) {
            batch.left[i] = batch.matrix[placeOfBit(DesStandard::InitialPermutation[i])];
            batch.right[i] = batch.matrix[placeOfBit(DesStandard::InitialPermutation[32 + i])];
        }
    }

    /// The halves are exchanged after the last round.
    static void join(Batch& batch)
    {
        for (int i = 0; i < 32; ++i) {
            batch.matrix[placeOfBit(DesStandard::InitialPermutation[i])] = batch.right[i];
            batch.matrix[placeOfBit(DesStandard::InitialPermutation[32 + i])] = batch.left[i];
        }
    }

    static void exchangeHalves(Batch& batch)
    {
        for (int i = 0; i < 32; ++i) { // no std::swap(): the linker might share it with other files
            const Vector left = batch.left[i];
            batch.left[i] = batch.right[i];
            batch.right[i] = left;
        }
    }

    // ---- Rounds

    using Boxes = std::make_index_sequence<8>;

    template <std::size_t... Box>
    static void addRound(Half& half, const Half& other, const std::uint32_t (&key)[48],
                         std::index_sequence<Box...>)
    {
        (addBox<Box>(half, other, key), ...);
    }

    template <std::size_t Box>
    static constexpr SboxCircuit::Circuit CircuitOf{Box, InstructionSet::Kind, InstructionSet::Recipes[Box]};

    /// Exclusive-ors the output of one S-box into the half-block. Every index is a constant, which lets the
    /// compiler keep the signals in registers.
    template <std::size_t Box>
    static void addBox(Half& half, const Half& other, const std::uint32_t (&key)[48])
    {
        static_assert(CircuitOf<Box>.isRight(Box), "the circuit is not the S-box");
        Vector signals[CircuitOf<Box>.signals];
        enter<Box>(signals, other, key, std::make_index_sequence<6>());
        evaluate<Box>(signals, std::make_index_sequence<CircuitOf<Box>.signals - 6>());
        leave<Box>(signals, half, std::make_index_sequence<4>());
    }

    template <std::size_t Box, std::size_t... I>
    static void enter(Vector* signals, const Half& half, const std::uint32_t (&key)[48],
                      std::index_sequence<I...>)
    {
        ((signals[I] =
              half[DesStandard::Expansion[6 * Box + I] - 1] ^ Vector(WordVector{} | key[6 * Box + I])),
         ...);
    }

    template <std::size_t Box, std::size_t... I>
    static void evaluate(Vector* signals, std::index_sequence<I...>)
    {
        ((signals[6 + I] = gate<Box, 6 + I>(signals)), ...);
    }

    template <std::size_t Box, std::size_t... I>
    static void leave(const Vector* signals, Half& half, std::index_sequence<I...>)
    {
        ((half[PlaceAfterPermutation<4 * Box + I + 1>] ^= signals[CircuitOf<Box>.outputs[I]]), ...);
    }

    template <std::size_t Box, std::size_t Signal>
    static Vector gate(const Vector* signals)
    {
        constexpr SboxCircuit::Gate found = CircuitOf<Box>.gates[Signal];
        return InstructionSet::template gate<found.table>(signals[found.a], signals[found.b],
                                                          signals[found.c]);
    }

    /// Where P moves a bit. Bits are counted from 1, places from 0.
    static constexpr int placeAfterPermutation(int bit)
    {
        int place = 0;
        while (DesStandard::Permutation[place] != bit)
            ++place;
        return place;
    }

    template <int Bit>
    static constexpr int PlaceAfterPermutation = placeAfterPermutation(Bit);

    // ---- Blocks in rows to bits in rows, and back

    /// Transposes the 64 by 64 bits in each column of words: squares of bits are exchanged across the diagonal,
    /// 32 bits wide at first, then 16 and so on; three sizes at a time, since eight rows fit into registers.
    static void transpose(Vector (&rows)[64])
    {
        for (std::size_t i = 0; i < 8; ++i)
            exchangeAcross<8>(rows + i);
        for (std::size_t i = 0; i < 64; i += 8)
            exchangeAcross<1>(rows + i);
    }

    template <std::size_t Distance>
    static void exchangeAcross(Vector* rows)
    {
        Vector row[8];
        for (std::size_t i = 0; i < 8; ++i)
            row[i] = rows[i * Distance];
        exchangeAcross<Distance, 4>(row);
        exchangeAcross<Distance, 2>(row);
        exchangeAcross<Distance, 1>(row);
        for (std::size_t i = 0; i < 8; ++i)
            rows[i * Distance] = row[i];
    }

    template <std::size_t Distance, std::size_t Step>
    static void exchangeAcross(Vector (&row)[8])
    {
        constexpr std::size_t width = Distance * Step;
        constexpr std::uint64_t lowHalves = ~std::uint64_t(0) / ((std::uint64_t(1) << width) + 1);
        for (std::size_t i = 0; i < 8; ++i) {
            if ((i & Step) != 0)
                continue;
            const Vector difference = ((row[i] >> width) ^ row[i + Step]) & lowHalves;
            row[i + Step] ^= difference;
            row[i] ^= difference << width;
        }
    }
};
