#pragma once

#include "common/ciphers/CipherContext.h"

#include <cstddef>
#include <memory>
#include <string_view>

/// What des3() consists of, for those who have a buffer of their own.
namespace ByteStrings {

using Context = std::unique_ptr<CipherContext, decltype(&crypto_cipher_deinit)>;

/// A Triple DES context for a key and a vector of any length, which are cut or filled up with zero bytes.
/// Null when memory is short, which a log line tells.
Context makeContext(std::string_view key, std::string_view iv);

/// The length up to the end of the last block.
constexpr std::size_t wholeBlocks(std::size_t length)
{
    return (length + 7) / 8 * 8;
}

/// Whether hexadecimal digits hold the eight bytes that every protected text begins with.
constexpr bool isProtectedText(std::size_t digits)
{
    return (digits + 1) / 2 >= 8;
}

/// Enciphers or deciphers whole blocks in place.
void process(const Context& context, char* bytes, std::size_t length, bool encrypt);

} // namespace ByteStrings
