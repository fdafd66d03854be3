#pragma once

#include "common/ciphers/Sha256.h"

/// The compression function of SHA-256, for each instruction set.
namespace Sha256Blocks {

/// Hashes whole blocks of 64 bytes into the state.
using Compress = void(std::uint32_t* state, const unsigned char* blocks, std::size_t count);
Compress compressAvx2, compressSha;
SKYLUME_EXPORT Compress compressPortable;

struct Path
{
    const char* name;
    bool (*isAvailable)();
    Compress* compress;
};

} // namespace Sha256Blocks
