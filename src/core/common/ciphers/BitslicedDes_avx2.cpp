#include "common/ciphers/BitslicedDesTwoInputs_p.h"

void TripleDesCbc::bitslicedAvx2(const KeyBits& key, unsigned char* chain, const unsigned char* crypt,
                                 unsigned char* plain, std::size_t blocks)
{
    BitslicedDes<TwoInputGates<32>>::decrypt(key, chain, crypt, plain, blocks);
}
