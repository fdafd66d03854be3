#pragma once

#include "skylume_export.h"

#include <cstddef>
#include <cstdint>

/// SHA-256 (FIPS 180-4). The functions may be called from any thread, with one context per thread. They do
/// nothing when a pointer is null.

constexpr unsigned Sha256DigestSize = 32;

/// State of an incremental hash.
struct Sha256Context
{
    std::uint32_t state[8];
    std::uint64_t length; ///< bytes hashed so far
    unsigned char block[64];
};

extern "C" {

/// The round constants.
SKYLUME_EXPORT extern const std::uint32_t K[64];

/// Starts a hash.
SKYLUME_EXPORT void Sha256_Init(Sha256Context* context);

/// Adds bytes to the hash.
SKYLUME_EXPORT void Sha256_Update(Sha256Context* context, const unsigned char* data, std::size_t size);

/// Finishes the hash and wipes the context, which must be initialised before it is used again.
/// @param hashOut receives the 32 bytes of the digest
SKYLUME_EXPORT void Sha256_Final(Sha256Context* context, unsigned char* hashOut);

/// Hashes a message in one call.
/// @param hashOut receives the 32 bytes of the digest
/// @return 0, or -1 when hashOut is null or the message is empty or null
SKYLUME_EXPORT int sha256(const unsigned char* data, unsigned int len, unsigned char* hashOut);
}
