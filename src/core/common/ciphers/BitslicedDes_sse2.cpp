#include "common/ciphers/BitslicedDesTwoInputs_p.h"

namespace {
struct Sse2 : TwoInputGates<16>
{
};
} // namespace

void TripleDesCbc::bitslicedSse2(const KeyBits& key, unsigned char* chain, const unsigned char* crypt,
                                 unsigned char* plain, std::size_t blocks)
{
    BitslicedDes<Sse2>::decipher(key, chain, crypt, plain, blocks);
}
