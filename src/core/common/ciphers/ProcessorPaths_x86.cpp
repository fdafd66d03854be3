#include "common/ciphers/ProcessorPaths_p.h"

#include <cpuid.h>

namespace {

bool hasSse2()
{
    return __builtin_cpu_supports("sse2");
}

bool hasSsse3()
{
    return __builtin_cpu_supports("ssse3");
}

bool hasAvx2()
{
    return __builtin_cpu_supports("avx2");
}

bool hasAvx2AndBmi()
{
    return hasAvx2() && __builtin_cpu_supports("bmi") && __builtin_cpu_supports("bmi2");
}

bool hasAvx512()
{
    return __builtin_cpu_supports("avx512f");
}

/// Not every compiler has a name for this feature.
bool hasSha()
{
    constexpr unsigned features = 7, shaBit = 1u << 29;
    unsigned a = 0, b = 0, c = 0, d = 0;
    const bool isKnown = __get_cpuid_count(features, 0, &a, &b, &c, &d) != 0;
    return isKnown && (b & shaBit) != 0 && __builtin_cpu_supports("sse4.1");
}

} // namespace

const TripleDesCbc::Path* ProcessorPaths::tripleDes()
{
    static constexpr TripleDesCbc::Path paths[] = {{"SSE2", hasSse2, 96, TripleDesCbc::bitslicedSse2},
                                                   {"AVX2", hasAvx2, 64, TripleDesCbc::bitslicedAvx2},
                                                   {"AVX-512", hasAvx512, 80, TripleDesCbc::bitslicedAvx512},
                                                   {nullptr, nullptr, 0, nullptr}};
    return paths;
}

const Sha256Blocks::Path* ProcessorPaths::sha256()
{
    static constexpr Sha256Blocks::Path paths[] = {{"AVX2", hasAvx2AndBmi, Sha256Blocks::compressAvx2},
                                                   {"SHA", hasSha, Sha256Blocks::compressSha},
                                                   {nullptr, nullptr, nullptr}};
    return paths;
}

const Base64Groups::Path* ProcessorPaths::base64()
{
    using namespace Base64Groups;
    static constexpr Base64Groups::Path paths[] = {{"SSSE3", hasSsse3, encodeSsse3, decodeSsse3},
                                                   {"AVX2", hasAvx2, encodeAvx2, decodeAvx2},
                                                   {nullptr, nullptr, nullptr, nullptr}};
    return paths;
}

const Hex::Path* ProcessorPaths::hex()
{
    using namespace Hex;
    static constexpr Hex::Path paths[] = {{"SSSE3", hasSsse3, encodeSsse3, decodeSsse3},
                                          {"AVX2", hasAvx2, encodeAvx2, decodeAvx2},
                                          {nullptr, nullptr, nullptr, nullptr}};
    return paths;
}
