#include "common/ciphers/BitslicedDesTwoInputs_p.h"

namespace {
struct Avx2 : TwoInputGates<32>
{
};
} // namespace

void TripleDesCbc::bitslicedAvx2(const KeyBits& key, unsigned char* chain, const unsigned char* crypt,
                                 unsigned char* plain, std::size_t blocks)
{
    BitslicedDes<Avx2>::decipher(key, chain, crypt, plain, blocks);
}
