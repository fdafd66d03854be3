#pragma once

#include "skylume_export.h"

#include <cstdint>

/// Triple DES (FIPS 46-3) in the form encipher-decipher-encipher with three independent keys, block by block.
/// The functions may be called from any thread; they keep no state but what the caller owns. Given a null
/// pointer, they do nothing.

/// The keys of all rounds, expanded from a key of 24 bytes; treat it as a secret. How the words are laid out
/// is not part of the interface.
struct alignas(8) Des3Schedule
{
    std::uint32_t encrypt[3][32]; ///< in the order of use
    std::uint32_t decrypt[3][32]; ///< in the order of use
};

extern "C" {

/// Expands a key.
/// @param key 24 bytes; the lowest bit of each, its parity, is ignored
SKYLUME_EXPORT void des3_key_setup(const unsigned char* key, Des3Schedule* schedule);

/// Enciphers one block of eight bytes. The blocks may be the same.
SKYLUME_EXPORT void des3_encrypt(const unsigned char* plain, const Des3Schedule* schedule,
                                 unsigned char* crypt);

/// Deciphers one block of eight bytes. The blocks may be the same.
SKYLUME_EXPORT void des3_decrypt(const unsigned char* crypt, const Des3Schedule* schedule,
                                 unsigned char* plain);
}
