#include "common/ciphers/Hex_p.h"

#include "common/ciphers/ProcessorPaths_p.h"

namespace {

constexpr unsigned valueOf(char digit)
{
    const unsigned number = unsigned(digit) - '0', letter = (unsigned(digit) | 0x20) - 'a';
    return number < 10 ? number : letter < 6 ? letter + 10 : 0;
}

} // namespace

const Hex::Path* Hex::bestPath()
{
    static const Path* const path = ProcessorPaths::best(ProcessorPaths::hex());
    return path;
}

void Hex::encode(const Path* path, const std::uint8_t* bytes, std::size_t size, char* digits)
{
    constexpr char Digits[] = "0123456789ABCDEF";
    for (std::size_t i = path ? path->encode(bytes, size, digits) : 0; i < size; ++i) {
        digits[2 * i] = Digits[bytes[i] >> 4];
        digits[2 * i + 1] = Digits[bytes[i] & 0xf];
    }
}

void Hex::decode(const Path* path, const char* digits, std::size_t length, std::uint8_t* bytes)
{
    const std::size_t pairs = length / 2;
    for (std::size_t i = path ? path->decode(digits, pairs, bytes) : 0; i < pairs; ++i)
        bytes[i] = std::uint8_t(valueOf(digits[2 * i]) << 4 | valueOf(digits[2 * i + 1]));
    if (length % 2 != 0)
        bytes[pairs] = std::uint8_t(valueOf(digits[length - 1]) << 4);
}
