#pragma once

#include "common/ciphers/CipherContext.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

/// What des3() consists of, for those who have a buffer of their own.
namespace ByteStrings {

constexpr std::size_t BlockSize = 8; ///< bytes of a block and of a vector

/// A vector for a new text: random bytes. Should the system fail, some of them are zeros; what is enciphered
/// then can be read back all the same.
std::string newVector();

using Context = std::unique_ptr<CipherContext, decltype(&crypto_cipher_deinit)>;

/// A Triple DES context for a key and a vector of any length, which are cut or filled up with zero bytes.
/// Null when memory is short, which a log line tells.
Context makeContext(std::string_view key, std::string_view iv);

/// The length up to the end of the last block.
constexpr std::size_t wholeBlocks(std::size_t length)
{
    return (length + BlockSize - 1) / BlockSize * BlockSize;
}

/// Whether hexadecimal digits hold the vector that every protected text begins with.
constexpr bool isProtectedText(std::size_t digits)
{
    return (digits + 1) / 2 >= BlockSize;
}

/// Enciphers or deciphers whole blocks in place.
void process(const Context& context, char* bytes, std::size_t length, bool encrypt);

} // namespace ByteStrings
