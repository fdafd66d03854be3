#include "CipherPeers.h"

#include <gcrypt.h>
#include <nettle/cbc.h>
#include <nettle/des.h>
#include <nettle/sha2.h>
#include <openssl/crypto.h>
#include <openssl/des.h>
#include <openssl/evp.h>
#include <openssl/sha.h>

#include <cstring>

namespace CipherPeers {

struct OpenSslState
{
    DES_key_schedule keys[3];
    DES_cblock chain;

    OpenSslState(const unsigned char* key, const unsigned char* iv)
    {
        for (std::size_t i = 0; i < 3; ++i)
            DES_set_key_unchecked(
                reinterpret_cast<const_DES_cblock*>(const_cast<unsigned char*>(key + 8 * i)), &keys[i]);
        std::memcpy(chain, iv, sizeof chain);
    }

    void process(const unsigned char* in, unsigned char* out, std::size_t size, bool encrypt)
    {
        DES_ede3_cbc_encrypt(in, out, long(size), &keys[0], &keys[1], &keys[2], &chain, encrypt);
    }
};

struct GcryptState
{
    gcry_cipher_hd_t handle = nullptr;

    GcryptState(const unsigned char* key, const unsigned char* iv)
    {
        gcry_check_version(nullptr);
        gcry_cipher_open(&handle, GCRY_CIPHER_3DES, GCRY_CIPHER_MODE_CBC, 0);
        gcry_cipher_setkey(handle, key, 24);
        gcry_cipher_setiv(handle, iv, 8);
    }
    ~GcryptState() { gcry_cipher_close(handle); }

    void process(const unsigned char* in, unsigned char* out, std::size_t size, bool encrypt)
    {
        if (encrypt)
            gcry_cipher_encrypt(handle, out, size, in, size);
        else
            gcry_cipher_decrypt(handle, out, size, in, size);
    }
};

struct NettleState
{
    struct CBC_CTX(des3_ctx, DES_BLOCK_SIZE) context;

    NettleState(const unsigned char* key, const unsigned char* iv)
    {
        des3_set_key(&context.ctx, key);
        CBC_SET_IV(&context, iv);
    }

    void process(const unsigned char* in, unsigned char* out, std::size_t size, bool encrypt)
    {
        if (encrypt)
            CBC_ENCRYPT(&context, des3_encrypt, size, out, in);
        else
            CBC_DECRYPT(&context, des3_decrypt, size, out, in);
    }
};

template <typename State>
TripleDes<State>::TripleDes(const unsigned char* key, const unsigned char* iv)
    : m_state(new State(key, iv))
{
}

template <typename State>
TripleDes<State>::~TripleDes() = default;

template <typename State>
void TripleDes<State>::process(const unsigned char* in, unsigned char* out, std::size_t size, bool encrypt)
{
    m_state->process(in, out, size, encrypt);
}

template class TripleDes<OpenSslState>;
template class TripleDes<GcryptState>;
template class TripleDes<NettleState>;

void openSslTripleDes(const unsigned char* key, const unsigned char* iv, const unsigned char* in,
                      unsigned char* out, std::size_t size, bool encrypt)
{
    OpenSslState(key, iv).process(in, out, size, encrypt);
}

void openSslSha256(const unsigned char* in, std::size_t size, unsigned char* digest)
{
    SHA256_CTX context;
    SHA256_Init(&context);
    SHA256_Update(&context, in, size);
    SHA256_Final(digest, &context);
}

void gcryptSha256(const unsigned char* in, std::size_t size, unsigned char* digest)
{
    gcry_md_hash_buffer(GCRY_MD_SHA256, digest, in, size);
}

void nettleSha256(const unsigned char* in, std::size_t size, unsigned char* digest)
{
    sha256_ctx context;
    sha256_init(&context);
    sha256_update(&context, size, in);
    sha256_digest(&context, SHA256_DIGEST_SIZE, digest);
}

void openSslBase64Encode(const unsigned char* in, std::size_t size, unsigned char* out)
{
    EVP_EncodeBlock(out, in, int(size));
}

void openSslBase64Decode(const unsigned char* in, std::size_t size, unsigned char* out)
{
    EVP_DecodeBlock(out, in, int(size));
}

void openSslHexEncode(const unsigned char* in, std::size_t size, char* out)
{
    OPENSSL_buf2hexstr_ex(out, 2 * size + 1, nullptr, in, size, '\0');
}

void openSslHexDecode(const char* digits, unsigned char* out, std::size_t size)
{
    OPENSSL_hexstr2buf_ex(out, size, nullptr, digits, '\0');
}

} // namespace CipherPeers
