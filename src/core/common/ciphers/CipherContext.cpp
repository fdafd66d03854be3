#include "common/ciphers/CipherContext.h"

#include "common/ciphers/Overlap_p.h"
#include "common/ciphers/TripleDesCbc_p.h"
#include "common/ciphers/Wipe_p.h"

#include <cstdlib>

struct CipherContext
{
    int algorithm;
    Des3Schedule schedule;
    unsigned char chain[8];
};

namespace {

constexpr int BlockSize = sizeof(CipherContext::chain);
constexpr int KeySize = 24;

/// Checks the arguments and processes the blocks. The cipher accepts separate buffers or a single one.
template <typename Cipher>
int process(CipherContext* context, const unsigned char* in, unsigned char* out, int len, Cipher cipher)
{
    if (!context || context->algorithm != CipherTripleDes || len % BlockSize != 0)
        return -1;
    if (len <= 0)
        return 0;
    if (!in || !out)
        return -1;
    const auto size = std::size_t(len);
    if (in != out && Ciphers::overlap(in, size, out, size)) {
        std::memmove(out, in, size);
        in = out;
    }
    cipher(context->schedule, context->chain, in, out, size / BlockSize);
    return 0;
}

} // namespace

CipherContext* crypto_cipher_init(int alg, const unsigned char* iv, const unsigned char* key, int keyLength)
{
    if (alg != CipherTripleDes || keyLength != KeySize || !iv || !key)
        return nullptr;
    auto* const context = static_cast<CipherContext*>(std::calloc(1, sizeof(CipherContext)));
    if (!context)
        return nullptr;
    context->algorithm = alg;
    des3_key_setup(key, &context->schedule);
    std::memcpy(context->chain, iv, BlockSize);
    return context;
}

int crypto_cipher_encrypt(CipherContext* context, const unsigned char* plain, unsigned char* crypt, int len)
{
    return process(context, plain, crypt, len, TripleDesCbc::encrypt);
}

int crypto_cipher_decrypt(CipherContext* context, const unsigned char* crypt, unsigned char* plain, int len)
{
    return process(context, crypt, plain, len, TripleDesCbc::decrypt);
}

void crypto_cipher_deinit(CipherContext* context)
{
    if (!context)
        return;
    Ciphers::wipe(context, sizeof *context);
    std::free(context);
}
