#include "common/ciphers/Base64.h"

#include "common/ciphers/Base64_p.h"
#include "common/ciphers/Overlap_p.h"
#include "common/ciphers/ProcessorPaths_p.h"
#include "common/ciphers/Wipe_p.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <cstring>

namespace {

constexpr int BadArgument = 1;
constexpr int NoCapacity = 6;
constexpr int Failed = -1;

constexpr std::uint8_t Foreign = 0xff;

struct ValueTable
{
    std::uint8_t ofCharacter[256];
};

constexpr ValueTable makeValues()
{
    ValueTable values{};
    for (std::uint8_t& value : values.ofCharacter)
        value = Foreign;
    for (std::uint8_t value = 0; value < 64; ++value)
        values.ofCharacter[static_cast<std::uint8_t>(Base64Groups::Alphabet[value])] = value;
    values.ofCharacter['='] = 0;
    return values;
}

constexpr ValueTable Values = makeValues();

/// The 24 bits of a group.
std::uint32_t bitsOf(const std::uint8_t* text)
{
    std::uint32_t bits = 0;
    for (int i = 0; i < 4; ++i) {
        const std::uint8_t value = Values.ofCharacter[text[i]];
        if (value != Foreign)
            bits = bits << 6 | value;
    }
    return bits;
}

void encodeGroup(std::uint32_t bits, std::uint8_t* text)
{
    for (int i = 0; i < 4; ++i)
        text[i] = static_cast<std::uint8_t>(Base64Groups::Alphabet[bits >> (18 - 6 * i) & 0x3f]);
}

/// No local static: its guard would show in the time of short inputs.
const Base64Groups::Path* const BestPath = ProcessorPaths::best(ProcessorPaths::base64());

/// The part of a string that is decoded: the characters before the first "=", and padding.
struct Extent
{
    explicit Extent(const char* text)
    {
        const char* const end = std::strchr(text, '=');
        characters = end ? std::size_t(end - text) : std::strlen(text);
        padding = !end ? 0 : end[1] == '=' ? 2 : 1;
    }

    std::size_t bytes() const
    {
        const std::size_t groups = (characters + padding) / 4;
        return groups == 0 ? 0 : 3 * groups - padding;
    }

    std::size_t characters;
    std::size_t padding;
};

/// The result for invalid arguments, or 0.
int argumentFault(const void* in, bool isEmpty, const void* out, unsigned int* outLen)
{
    const bool isBad = !in || isEmpty || !out || !outLen;
    if (!isBad)
        return *outLen == 0 ? NoCapacity : 0;
    if (outLen)
        *outLen = 0;
    return BadArgument;
}

/// Encodes or decodes a copy of the input, because the output overlaps it.
template <typename Code, typename Length>
[[gnu::noinline]] int codeCopy(Code code, const unsigned char* in, std::size_t size, Length length,
                               unsigned char* out, unsigned int* outLen)
{
    auto* const copy = static_cast<unsigned char*>(std::calloc(size + 1, 1)); // terminates a string
    if (!copy) {
        *outLen = 0;
        return Failed;
    }
    std::memcpy(copy, in, size);
    const int result = code(copy, length, out, outLen);
    Ciphers::wipe(copy, size);
    std::free(copy);
    return result;
}

void encodeOneByOne(const std::uint8_t* bytes, std::size_t size, std::uint8_t* text)
{
    for (; size >= 3; bytes += 3, size -= 3, text += 4)
        encodeGroup(bytes[0] << 16u | bytes[1] << 8u | bytes[2], text);
    if (size == 0)
        return;
    encodeGroup(bytes[0] << 16u | (size == 2 ? bytes[1] << 8u : 0u), text);
    std::memset(text + 1 + size, '=', 3 - size);
}

void decodeOneByOne(const std::uint8_t* text, std::uint8_t* bytes, std::size_t size)
{
    for (std::size_t at = 0; at < size; at += 3) {
        const std::uint32_t bits = bitsOf(text + at / 3 * 4);
        for (std::size_t i = 0; i < 3 && at + i < size; ++i)
            bytes[at + i] = static_cast<std::uint8_t>(bits >> (16 - 8 * i));
    }
}

} // namespace

void Base64Groups::encode(const Path* path, const std::uint8_t* bytes, std::size_t size, std::uint8_t* text)
{
    (path && size >= VectorSize ? path->encode : encodeOneByOne)(bytes, size, text);
}

void Base64Groups::decode(const Path* path, const std::uint8_t* text, std::uint8_t* bytes, std::size_t size)
{
    (path && size >= VectorSize ? path->decode : decodeOneByOne)(text, bytes, size);
}

int cl_base64Encode(const unsigned char* in, unsigned int inLen, unsigned char* out, unsigned int* outLen)
{
    if (const int fault = argumentFault(in, inLen == 0, out, outLen))
        return fault;
    const std::uint64_t size = (std::uint64_t(inLen) + 2) / 3 * 4;
    if (size <= UINT_MAX && Ciphers::overlap(in, inLen, out, std::size_t(size)))
        return codeCopy(cl_base64Encode, in, inLen, inLen, out, outLen);
    *outLen = size <= UINT_MAX ? static_cast<unsigned int>(size) : 0;
    if (*outLen == 0)
        return Failed;
    Base64Groups::encode(BestPath, in, inLen, out);
    return 0;
}

int cl_base64Decode(const unsigned char* in, int inLen, unsigned char* out, unsigned int* outLen)
{
    if (const int fault = argumentFault(in, inLen == 0, out, outLen))
        return fault;
    const Extent extent(reinterpret_cast<const char*>(in));
    const std::size_t size = extent.bytes();
    if (size <= UINT_MAX && Ciphers::overlap(in, extent.characters + extent.padding, out, size))
        return codeCopy(cl_base64Decode, in, extent.characters + extent.padding, inLen, out, outLen);
    *outLen = size <= UINT_MAX ? static_cast<unsigned int>(size) : 0;
    if (*outLen == 0)
        return Failed;
    Base64Groups::decode(BestPath, in, out, size);
    return 0;
}
