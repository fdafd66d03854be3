#pragma once

#include "skylume_export.h"

/// A context holds a key and the chaining block from call to call. It must not be used by two threads at the
/// same time, since every call advances the chain.
struct CipherContext;

/// The only algorithm: Triple DES with three keys in cipher-block-chaining mode.
constexpr int CipherTripleDes = 2;

extern "C" {

/// Creates a context; release it with crypto_cipher_deinit().
/// @param alg       CipherTripleDes
/// @param iv        8 bytes, the first chaining block
/// @param key       24 bytes
/// @param keyLength 24
/// @return null for another algorithm or length, for a null pointer, or when memory is short
SKYLUME_EXPORT CipherContext* crypto_cipher_init(int alg, const unsigned char* iv, const unsigned char* key,
                                                 int keyLength);

/// Encrypts whole blocks and continues the chain of the context. The buffers may overlap.
/// @param len bytes, a multiple of 8; nothing is written for 0 and negative numbers
/// @return 0, or -1 when len is no multiple of 8, the context is null or of another algorithm, or a buffer is
///         null while there is something to write
SKYLUME_EXPORT int crypto_cipher_encrypt(CipherContext* context, const unsigned char* plain,
                                         unsigned char* crypt, int len);

/// Decrypts; otherwise as crypto_cipher_encrypt().
SKYLUME_EXPORT int crypto_cipher_decrypt(CipherContext* context, const unsigned char* crypt,
                                         unsigned char* plain, int len);

/// Wipes and releases a context; null is ignored.
SKYLUME_EXPORT void crypto_cipher_deinit(CipherContext* context);
}
