#pragma once

#include "common/ciphers/Base64_p.h"
#include "common/ciphers/Hex_p.h"
#include "common/ciphers/Sha256_p.h"
#include "common/ciphers/TripleDesCbc_p.h"

/// Faster implementations for instruction sets that the processor may have. There is one source file for each
/// processor family, and one for families without such code.
namespace ProcessorPaths {

/// Lists of implementations, slowest first. An entry without a name ends the list.
SKYLUME_EXPORT const TripleDesCbc::Path* tripleDes();
SKYLUME_EXPORT const Sha256Blocks::Path* sha256();
SKYLUME_EXPORT const Base64Groups::Path* base64();
SKYLUME_EXPORT const Hex::Path* hex();

/// Calls a function for each implementation that this processor can run.
template <typename Path, typename Function>
void forEachAvailable(const Path* paths, Function function)
{
    for (; paths->name; ++paths) {
        if (paths->isAvailable())
            function(*paths);
    }
}

/// The fastest one that this processor can run, or null. Call it once and keep the result.
template <typename Path>
const Path* best(const Path* paths)
{
    const Path* best = nullptr;
    forEachAvailable(paths, [&best](const Path& path) { best = &path; });
    return best;
}

} // namespace ProcessorPaths
