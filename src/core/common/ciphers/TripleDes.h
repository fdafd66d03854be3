#pragma once

#include "skylume_export.h"

#include <cstdint>

/// Triple DES (FIPS 46-3) in the form encrypt-decrypt-encrypt with three independent keys, block by block. The
/// functions may be called from any thread. They do nothing when a pointer is null.

/// The round keys, expanded from a key of 24 bytes. Keep them secret. The layout of the words is not part of the
/// interface.
struct alignas(8) Des3Schedule
{
    std::uint32_t encrypt[3][32]; ///< in the order of use
    std::uint32_t decrypt[3][32]; ///< in the order of use
};

extern "C" {

/// Expands a key.
/// @param key 24 bytes; the lowest bit of each, its parity, is ignored
SKYLUME_EXPORT void des3_key_setup(const unsigned char* key, Des3Schedule* schedule);

/// Encrypts one block of eight bytes. The blocks may be the same.
SKYLUME_EXPORT void des3_encrypt(const unsigned char* plain, const Des3Schedule* schedule,
                                 unsigned char* crypt);

/// Decrypts one block of eight bytes. The blocks may be the same.
SKYLUME_EXPORT void des3_decrypt(const unsigned char* crypt, const Des3Schedule* schedule,
                                 unsigned char* plain);
}
