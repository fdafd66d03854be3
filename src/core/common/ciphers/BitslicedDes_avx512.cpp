#include "common/ciphers/BitslicedDes_p.h"

#include <immintrin.h>

namespace {

struct Avx512
{
    using Vector [[gnu::vector_size(64)]] = std::uint64_t;
    using WordVector [[gnu::vector_size(64)]] = std::uint32_t;

    static constexpr auto Kind = SboxCircuit::Gates::ThreeInputs;
    static constexpr SboxCircuit::Recipe Recipes[8] = {
        {"3210", "4110533214445432"}, {"0132", "031545243404124"},  {"0321", "442140402114013"},
        {"1032", "5014024150035"},    {"1230", "3512302115123322"}, {"2103", "402423202412301"},
        {"0132", "003511010121100"},  {"1230", "5553554400535542"}};

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
    BitslicedDes<Avx512>::decipher(key, chain, crypt, plain, blocks);
}
