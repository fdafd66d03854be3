#include "common/ciphers/Base64Tables_p.h"

#include "common/ciphers/Base64_p.h"

namespace {

using Base64Groups::Alphabet;
using Base64Groups::Lanes;

constexpr std::uint8_t Zero = 0x80; ///< as the place of a byte in a shuffle

constexpr Lanes repeated(std::uint32_t fourBytes)
{
    Lanes lanes{};
    for (int i = 0; i < 32; ++i)
        lanes.bytes[i] = static_cast<std::uint8_t>(fourBytes >> (8 * (i % 4)));
    return lanes;
}

constexpr Lanes repeatedByte(std::uint8_t byte)
{
    return repeated(0x01010101u * byte);
}

/// Sets a byte of every lane.
constexpr void set(Lanes& lanes, int index, int byte)
{
    lanes.bytes[index] = lanes.bytes[index + 16] = static_cast<std::uint8_t>(byte);
}

/// Shuffles between groups of three bytes and groups of four, where the bytes come in reverse.
constexpr void addByteTables(Base64Groups::Tables& tables)
{
    constexpr int ByteOfFour[] = {1, 0, 2, 1};
    for (int i = 0; i < 16; ++i) {
        set(tables.spread, i, i / 4 * 3 + ByteOfFour[i % 4]);
        set(tables.firstThree, i, i < 12 ? i / 3 * 4 + 2 - i % 3 : Zero);
    }
}

/// @param missing bytes that the last group lacks
constexpr void addEndTables(Base64Groups::Tables& tables, int missing)
{
    auto& [spread, padding] = tables.encodingAtEnd[missing];
    Lanes& packing = tables.packingAtEnd[missing];
    spread = tables.spread;
    packing = tables.firstThree;
    for (int i = 0; i < 16; ++i) {
        const int place = tables.spread.bytes[i] + missing;
        spread.bytes[i] = static_cast<std::uint8_t>(place < 12 ? place + 4 : Zero);
        padding.bytes[i] = static_cast<std::uint8_t>(i < 16 - missing ? 0 : '=' - Alphabet[0]);
        packing.bytes[i] = i < 4 + missing ? Zero : tables.firstThree.bytes[i - 4 - missing];
    }
}

constexpr void addCharacterTables(Base64Groups::Tables& tables)
{
    for (int value = 0; value < 64; ++value) {
        const int code = static_cast<std::uint8_t>(Alphabet[value]), row = code >> 4, column = code & 0xf;
        set(tables.rowsOfLowHalf, column, tables.rowsOfLowHalf.bytes[column] | 1 << row);
        set(tables.rowOfHighHalf, row, 1 << row);
        set(tables.valueOffset, code == '/' ? row - 1 : row, value - code);
        set(tables.characterOffset, value < 26 ? 13 : value < 52 ? 0 : value - 51, code - value);
    }
}

constexpr Base64Groups::Tables makeTables()
{
    Base64Groups::Tables tables{};
    addByteTables(tables);
    for (int missing = 0; missing < 3; ++missing)
        addEndTables(tables, missing);
    tables.evenValues = repeated(0x0fc0fc00);
    tables.evenFactors = repeated(0x04000040);
    tables.oddValues = repeated(0x003f03f0);
    tables.oddFactors = repeated(0x01000010);
    tables.capitals = repeatedByte(26);
    tables.letters = repeatedByte(51);
    tables.placeOfCapitals = repeatedByte(13);
    tables.lowHalf = repeatedByte(0x0f);
    tables.slash = repeatedByte('/');
    tables.equals = repeatedByte('=');
    tables.fromEquals = repeatedByte('A' - '=');
    tables.pairFactors = repeated(0x01400140);
    tables.groupFactors = repeated(0x00011000);
    addCharacterTables(tables);
    return tables;
}

} // namespace

constexpr Base64Groups::Tables Base64Groups::tables = makeTables();
