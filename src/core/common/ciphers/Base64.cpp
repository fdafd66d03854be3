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

struct Values
{
    std::uint8_t ofCharacter[256];
};

constexpr Values makeValues()
{
    Values values{};
    for (std::uint8_t& value : values.ofCharacter)
        value = Foreign;
    for (std::uint8_t value = 0; value < 64; ++value)
        values.ofCharacter[static_cast<std::uint8_t>(Base64Groups::Alphabet[value])] = value;
    values.ofCharacter['='] = 0;
    return values;
}

constexpr Values Values = makeValues();

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

const Base64Groups::Path* bestPath()
{
    static const auto* const path = ProcessorPaths::best(ProcessorPaths::base64());
    return path;
}

/// What counts of a text: its characters before the first "=", and padding.
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

/// What is wrong with the arguments, or 0.
int argumentFault(const void* in, bool isEmpty, const void* out, unsigned int* outLen)
{
    const bool isBad = !in || isEmpty || !out || !outLen;
    if (!isBad)
        return *outLen == 0 ? NoCapacity : 0;
    if (outLen)
        *outLen = 0;
    return BadArgument;
}

/// Has the result written where it belongs; through memory of its own when input and output overlap.
/// @param write takes the place to write to
template <typename Write>
int produce(const unsigned char* in, std::size_t inSize, unsigned char* out, std::size_t outSize,
            unsigned int* outLen, Write write)
{
    *outLen = 0;
    if (outSize == 0 || outSize > UINT_MAX)
        return Failed;
    if (!Ciphers::overlap(in, inSize, out, outSize)) {
        write(out);
    } else {
        auto* const copy = static_cast<std::uint8_t*>(std::malloc(outSize));
        if (!copy)
            return Failed;
        write(copy);
        std::memcpy(out, copy, outSize);
        Ciphers::wipe(copy, outSize);
        std::free(copy);
    }
    *outLen = static_cast<unsigned int>(outSize);
    return 0;
}

} // namespace

void Base64Groups::encode(const Path* path, const std::uint8_t* bytes, std::size_t size, std::uint8_t* text)
{
    const std::size_t groups = (size + 2) / 3;
    for (std::size_t i = path ? path->encode(bytes, size, text) : 0; i < groups; ++i) {
        std::uint32_t bits = 0;
        for (std::size_t at = 3 * i; at < 3 * i + 3; ++at)
            bits = bits << 8 | (at < size ? bytes[at] : 0u);
        encodeGroup(bits, text + 4 * i);
    }
    for (std::size_t missing = 3 * groups - size; missing > 0; --missing)
        text[4 * groups - missing] = '=';
}

void Base64Groups::decode(const Path* path, const std::uint8_t* text, std::uint8_t* bytes, std::size_t size)
{
    for (std::size_t at = path ? 3 * path->decode(text, bytes, size) : 0; at < size; at += 3) {
        const std::uint32_t bits = bitsOf(text + at / 3 * 4);
        for (std::size_t i = 0; i < 3 && at + i < size; ++i)
            bytes[at + i] = static_cast<std::uint8_t>(bits >> (16 - 8 * i));
    }
}

int cl_base64Encode(const unsigned char* in, unsigned int inLen, unsigned char* out, unsigned int* outLen)
{
    if (const int fault = argumentFault(in, inLen == 0, out, outLen))
        return fault;
    const std::uint64_t outSize = (std::uint64_t(inLen) + 2) / 3 * 4;
    if (outSize > UINT_MAX) {
        *outLen = 0;
        return Failed;
    }
    return produce(in, inLen, out, std::size_t(outSize), outLen,
                   [=](std::uint8_t* to) { Base64Groups::encode(bestPath(), in, inLen, to); });
}

int cl_base64Decode(const unsigned char* in, int inLen, unsigned char* out, unsigned int* outLen)
{
    if (const int fault = argumentFault(in, inLen == 0, out, outLen))
        return fault;
    const Extent extent(reinterpret_cast<const char*>(in));
    return produce(in, extent.characters + extent.padding, out, extent.bytes(), outLen,
                   [&](std::uint8_t* to) { Base64Groups::decode(bestPath(), in, to, extent.bytes()); });
}
