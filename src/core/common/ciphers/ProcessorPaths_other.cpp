#include "common/ciphers/ProcessorPaths_p.h"

namespace {

template <typename Path>
const Path* none()
{
    static constexpr Path Paths[] = {{}};
    return Paths;
}

} // namespace

const TripleDesCbc::Path* ProcessorPaths::tripleDes()
{
    return none<TripleDesCbc::Path>();
}

const Sha256Blocks::Path* ProcessorPaths::sha256()
{
    return none<Sha256Blocks::Path>();
}

const Base64Groups::Path* ProcessorPaths::base64()
{
    return none<Base64Groups::Path>();
}

const Hex::Path* ProcessorPaths::hex()
{
    return none<Hex::Path>();
}
