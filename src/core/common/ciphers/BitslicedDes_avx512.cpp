#include "common/ciphers/BitslicedDes_p.h"

#include <immintrin.h>

namespace {

struct Avx512
{
    using Vector [[gnu::vector_size(64)]] = std::uint64_t;
    using WordVector [[gnu::vector_size(64)]] = std::uint32_t;

    static constexpr auto Kind = SboxCircuit::Gates::ThreeInputs;
    static constexpr SboxCircuit::Recipe Recipes[8] = {
        {"2031", "151111331010412"}, {"1023", "5133111011"},      {"0312", "35314043335533"},
        {"1032", "5554521555531"},   {"1320", "315025314415423"}, {"3210", "220152520145321"},
        {"0321", "505033155351005"}, {"0123", "552513003101434"}};

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
