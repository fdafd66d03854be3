#include "common/ciphers/Base64Tables_p.h"

#include "common/ciphers/Base64_p.h"

namespace {

using Base64Groups::Alphabet;
using Base64Groups::Sixteen;

constexpr Sixteen repeated(std::uint32_t fourBytes)
{
    Sixteen sixteen{};
    for (int i = 0; i < 16; ++i)
        sixteen.bytes[i] = static_cast<std::uint8_t>(fourBytes >> (8 * (i % 4)));
    return sixteen;
}

constexpr Sixteen repeatedByte(std::uint8_t byte)
{
    return repeated(0x01010101u * byte);
}

/// Shuffles between groups of three bytes and groups of four, where the bytes come in reverse.
constexpr void addByteTables(Base64Groups::Tables& tables)
{
    constexpr std::uint8_t Zero = 0x80, ByteOfFour[] = {1, 0, 2, 1};
    for (std::uint8_t i = 0; i < 16; ++i) {
        const auto place = static_cast<std::uint8_t>(i / 4 * 3 + ByteOfFour[i % 4]);
        tables.spread.bytes[i] = place;
        tables.firstThree.bytes[i] = i < 12 ? std::uint8_t(i / 3 * 4 + 2 - i % 3) : Zero;
        for (std::uint8_t missing = 0; missing < 3; ++missing) {
            auto& [spread, padding] = tables.encodingAtEnd[missing];
            spread.bytes[i] = place + missing < 12 ? std::uint8_t(place + missing + 4) : Zero;
            padding.bytes[i] = i < 16 - missing ? 0 : std::uint8_t('=' - Alphabet[0]);
        }
    }
    for (std::uint8_t missing = 0; missing < 3; ++missing) {
        for (std::uint8_t i = 0; i < 16; ++i)
            tables.lastFour[missing].bytes[i] = i < 4 ? tables.firstThree.bytes[8 - missing + i] : Zero;
    }
}

constexpr void addCharacterTables(Base64Groups::Tables& tables)
{
    for (std::uint8_t value = 0; value < 64; ++value) {
        const auto code = static_cast<std::uint8_t>(Alphabet[value]);
        const int row = code >> 4;
        std::uint8_t& rows = tables.rowsOfLowHalf.bytes[code & 0xf];
        rows = std::uint8_t(rows | 1 << row);
        tables.rowOfHighHalf.bytes[row] = std::uint8_t(1 << row);
        tables.valueOffset.bytes[code == '/' ? row - 1 : row] = std::uint8_t(value - code);
        const int place = value < 26 ? 13 : value < 52 ? 0 : value - 51;
        tables.characterOffset.bytes[place] = std::uint8_t(code - value);
    }
}

constexpr Base64Groups::Tables makeTables()
{
    Base64Groups::Tables tables{};
    addByteTables(tables);
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
