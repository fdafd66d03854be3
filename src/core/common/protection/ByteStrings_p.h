#pragma once

#include "common/ciphers/CipherContext.h"

#include <cstddef>
#include <memory>
#include <string_view>

/// The steps of des3(), for callers with their own buffers.
namespace ByteStrings {

constexpr std::size_t BlockSize = 8; ///< bytes of a block and of an initialisation vector

using Context = std::unique_ptr<CipherContext, decltype(&crypto_cipher_deinit)>;

/// Creates a Triple DES context. Key and vector may have any length: they are cut or padded with zero bytes.
/// @return null when memory is short, which is logged
Context makeContext(std::string_view key, std::string_view iv);

/// Rounds a length up to whole blocks.
constexpr std::size_t wholeBlocks(std::size_t length)
{
    return (length + BlockSize - 1) / BlockSize * BlockSize;
}

/// Encrypts or decrypts whole blocks in place.
void process(const Context& context, char* bytes, std::size_t length, bool encrypt);

} // namespace ByteStrings
