#pragma once

#include "skylume_export.h"

/// Ciphers behind a context that carries the key and the chain from call to call. Contexts are independent of
/// each other; one must not be used by two threads at a time, since every call moves its chain on.
struct CipherContext;

/// The one algorithm there is: Triple DES with three keys in cipher-block-chaining mode.
constexpr int CipherTripleDes = 2;

extern "C" {

/// Makes a context, which crypto_cipher_deinit() releases.
/// @param alg       CipherTripleDes
/// @param iv        8 bytes, the first chaining block
/// @param key       24 bytes
/// @param keyLength 24
/// @return null for another algorithm or length, for a null pointer, or when memory is short
SKYLUME_EXPORT CipherContext* crypto_cipher_init(int alg, const unsigned char* iv, const unsigned char* key,
                                                 int keyLength);

/// Enciphers whole blocks, continuing the chain of the context. The buffers may overlap.
/// @param len bytes, a multiple of 8; 0 and negative ones write nothing
/// @return 0, or -1 when len is no multiple of 8, the context is null or of another algorithm, or a buffer is
///         null while there is something to write
SKYLUME_EXPORT int crypto_cipher_encrypt(CipherContext* context, const unsigned char* plain,
                                         unsigned char* crypt, int len);

/// Deciphers; otherwise as crypto_cipher_encrypt().
SKYLUME_EXPORT int crypto_cipher_decrypt(CipherContext* context, const unsigned char* crypt,
                                         unsigned char* plain, int len);

/// Wipes and releases a context; null is ignored.
SKYLUME_EXPORT void crypto_cipher_deinit(CipherContext* context);
}
