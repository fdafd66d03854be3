#include "common/ByteStrings.h"

#include "common/ByteStrings_p.h"
#include "common/ClearBuffer.h"
#include "common/ciphers/CipherContext.h"
#include "common/ciphers/Hex_p.h"
#include "common/ciphers/Wipe_p.h"
#include "platform/RandomSource.h"

#include <algorithm>

namespace {

constexpr std::size_t BlockSize = 8;
constexpr std::size_t KeySize = 24;
constexpr int MostRandomBytes = 128;

const unsigned char* bytesOf(const std::string& text)
{
    return reinterpret_cast<const unsigned char*>(text.data());
}

/// The beginning of a text, filled up with zero bytes; wiped in the end.
template <std::size_t Size>
struct FixedBytes
{
    explicit FixedBytes(const std::string& text)
    {
        std::copy_n(text.begin(), std::min(text.size(), Size), bytes);
    }
    ~FixedBytes() { Ciphers::wipe(bytes, Size); }
    Q_DISABLE_COPY_MOVE(FixedBytes)

    unsigned char bytes[Size] = {};
};

} // namespace

bool ByteStrings::des3InPlace(char* bytes, std::size_t length, const std::string& key, const std::string& iv,
                              bool encrypt)
{
    constexpr std::size_t Piece = std::size_t(1) << 30; // a context takes lengths of type int
    const FixedBytes<KeySize> keyBytes(key);
    const FixedBytes<BlockSize> ivBytes(iv);
    CipherContext* const context =
        crypto_cipher_init(CipherTripleDes, ivBytes.bytes, keyBytes.bytes, KeySize);
    if (!context)
        return false;
    auto* const text = reinterpret_cast<unsigned char*>(bytes);
    const auto process = encrypt ? crypto_cipher_encrypt : crypto_cipher_decrypt;
    for (std::size_t done = 0; done < length; done += Piece)
        process(context, text + done, text + done, int(std::min(Piece, length - done)));
    crypto_cipher_deinit(context);
    return true;
}

std::string des3(std::string const& data, std::string const& key, std::string const& iv, bool encrypt)
{
    const std::size_t length = (data.size() + BlockSize - 1) / BlockSize * BlockSize;
    std::string output(length, '\0');
    clearBuffer(&output[0], length, LOG_FILE, LOG_FUNCTION, __LINE__);
    std::copy(data.begin(), data.end(), output.begin());
    if (!ByteStrings::des3InPlace(&output[0], length, key, iv, encrypt)) {
        Ciphers::wipe(&output[0], length);
        output.clear();
    }
    return output;
}

std::string StrToHex(std::string const& bytes)
{
    std::string digits(2 * bytes.size(), '\0');
    Hex::encode(Hex::bestPath(), bytesOf(bytes), bytes.size(), &digits[0]);
    return digits;
}

std::string HexToStr(std::string const& digits)
{
    std::string bytes((digits.size() + 1) / 2, '\0');
    Hex::decode(Hex::bestPath(), digits.data(), digits.size(), reinterpret_cast<unsigned char*>(&bytes[0]));
    return bytes;
}

std::string TrimStr(std::string const& s, const char* left, const char* right)
{
    constexpr const char* Blanks = " \t\r\n";
    const std::size_t end = s.find_last_not_of('\0');
    if (end == std::string::npos)
        return {};
    const std::size_t first = s.find_first_not_of(left ? left : Blanks);
    const std::size_t last = s.find_last_not_of(right ? right : Blanks, end);
    if (first == std::string::npos || last == std::string::npos || first > last)
        return {};
    return s.substr(first, last - first + 1);
}

std::string GetRandomBytes(int count)
{
    std::string bytes;
    for (int i = std::clamp(count, 0, MostRandomBytes); i > 0; --i) {
        Platform::RandomSource source;
        if (!source.acquire()) {
            LOG_DEBUG("%s: %s: %s: %d: Error during CryptAcquireContext succeeded.\n", LOG_TIME, LOG_FILE,
                      LOG_FUNCTION, __LINE__);
            break;
        }
        char drawn[4];
        if (!source.draw(drawn, sizeof drawn)) {
            LOG_DEBUG("%s: %s: %s: %d: Error during CryptGenRandom.\n", LOG_TIME, LOG_FILE, LOG_FUNCTION,
                      __LINE__);
            break;
        }
        bytes += drawn[0];
        if (!source.release()) {
            LOG_DEBUG("%s: %s: %s: %d: Error during CryptGenRandom.\n", LOG_TIME, LOG_FILE, LOG_FUNCTION,
                      __LINE__);
            break;
        }
    }
    return bytes;
}
