#pragma once

#include "common/ciphers/Base64_p.h"
#include "common/ciphers/Hex_p.h"
#include "common/ciphers/Sha256_p.h"
#include "common/ciphers/TripleDesCbc_p.h"

/// The faster ways that processors of the family we are built for may offer beside the portable code. There
/// is one source file for each family, and one for those that have none.
namespace ProcessorPaths {

/// Lists of ways, each better than the one before it; one without a name ends the list.
SKYLUME_EXPORT const TripleDesCbc::Path* tripleDes();
SKYLUME_EXPORT const Sha256Blocks::Path* sha256();
SKYLUME_EXPORT const Base64Groups::Path* base64();
SKYLUME_EXPORT const Hex::Path* hex();

/// Calls for every way of a list that this processor can take.
template <typename Path, typename Function>
void forEachAvailable(const Path* paths, Function function)
{
    for (; paths->name; ++paths) {
        if (paths->isAvailable())
            function(*paths);
    }
}

/// The best of these ways, or null. Ask once and keep the answer.
template <typename Path>
const Path* best(const Path* paths)
{
    const Path* best = nullptr;
    forEachAvailable(paths, [&best](const Path& path) { best = &path; });
    return best;
}

} // namespace ProcessorPaths
