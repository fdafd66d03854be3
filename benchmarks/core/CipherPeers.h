#pragma once

#include <cstddef>
#include <memory>

/// The same operations of other libraries. In a separate file, because names in their headers conflict with
/// ours.
namespace CipherPeers {

/// Includes the key schedule, as for a short input.
void openSslTripleDes(const unsigned char* key, const unsigned char* iv, const unsigned char* in,
                      unsigned char* out, std::size_t size, bool encrypt);

/// Triple DES in cipher-block-chaining mode with a key that is set once.
template <typename State>
class TripleDes
{
public:
    TripleDes(const unsigned char* key, const unsigned char* iv);
    ~TripleDes();
    void process(const unsigned char* in, unsigned char* out, std::size_t size, bool encrypt);

private:
    std::unique_ptr<State> m_state;
};

using OpenSsl = TripleDes<struct OpenSslState>;
using Gcrypt = TripleDes<struct GcryptState>;
using Nettle = TripleDes<struct NettleState>;

void openSslSha256(const unsigned char* in, std::size_t size, unsigned char* digest);
void gcryptSha256(const unsigned char* in, std::size_t size, unsigned char* digest);
void nettleSha256(const unsigned char* in, std::size_t size, unsigned char* digest);

void openSslBase64Encode(const unsigned char* in, std::size_t size, unsigned char* out);
void openSslBase64Decode(const unsigned char* in, std::size_t size, unsigned char* out);
void openSslHexEncode(const unsigned char* in, std::size_t size, char* out);
void openSslHexDecode(const char* digits, unsigned char* out, std::size_t size);

} // namespace CipherPeers
