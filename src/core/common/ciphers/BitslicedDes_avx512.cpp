#include "common/ciphers/BitslicedDes_p.h"
#include "common/ciphers/SboxRecipes_p.h"

#include <immintrin.h>

namespace {

struct Avx512
{
    using Vector [[gnu::vector_size(64)]] = std::uint64_t;
    using WordVector [[gnu::vector_size(64)]] = std::uint32_t;

    static constexpr auto Kind = SboxCircuit::Gates::ThreeInputs;
    static constexpr auto& Recipes = SboxCircuit::ThreeInputRecipes;

    template <unsigned Table>
    static Vector gate(Vector a, Vector b, Vector c)
    {
        return Vector(_mm512_ternarylogic_epi64(__m512i(a), __m512i(b), __m512i(c), Table));
    }
};

} // namespace

void TripleDesCbc::bitslicedAvx512(const KeyBits& key, unsigned char* chain, const unsigned char* crypt,
                                   unsigned char* plain, std::size_t blocks)
{
    BitslicedDes<Avx512>::decrypt(key, chain, crypt, plain, blocks);
}
