#include "common/ByteStrings.h"

#include "common/ciphers/Hex_p.h"
#include "common/ciphers/Wipe_p.h"
#include "common/protection/ByteStrings_p.h"
#include "common/protection/ClearBuffer_p.h"
#include "platform/RandomSource_p.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace {

constexpr std::size_t KeySize = 24;
constexpr int MostRandomBytes = 128;

const unsigned char* bytesOf(const std::string& text)
{
    return reinterpret_cast<const unsigned char*>(text.data());
}

/// The beginning of a string, padded with zero bytes; wiped on destruction.
template <std::size_t Size>
struct FixedBytes
{
    explicit FixedBytes(std::string_view text)
    {
        std::copy_n(text.begin(), std::min(text.size(), Size), bytes);
    }
    ~FixedBytes() { Ciphers::wipe(bytes, Size); }
    Q_DISABLE_COPY_MOVE(FixedBytes)

    unsigned char bytes[Size] = {};
};

void logShortMemory(const char* function)
{
    LOG_WARNING("%s: %s: %s: memory is short", LOG_TIME, LOG_FILE, function);
}

/// Constructs a string. Returns an empty one when memory is short: nothing is thrown to plugins.
template <typename... Arguments>
std::string made(const char* function, Arguments&&... arguments)
{
    try {
        return std::string(std::forward<Arguments>(arguments)...);
    } catch (const std::exception&) {
        logShortMemory(function);
        return {};
    }
}

/// Appends one random byte, with a separate system call. A failure is logged under the caller's name.
bool addRandomByte(std::string& bytes, const char* function)
{
    Platform::RandomSource source;
    if (!source.acquire()) {
        LOG_DEBUG("%s: %s: %s: %d: Error during CryptAcquireContext succeeded.\n", LOG_TIME, LOG_FILE,
                  function, __LINE__);
        return false;
    }
    char drawn[4];
    const bool isDrawn = source.draw(drawn, sizeof drawn);
    if (isDrawn)
        bytes += drawn[0];
    Ciphers::wipe(drawn, sizeof drawn);
    if (isDrawn && source.release())
        return true;
    LOG_DEBUG("%s: %s: %s: %d: Error during CryptGenRandom.\n", LOG_TIME, LOG_FILE, function, __LINE__);
    return false;
}

} // namespace

ByteStrings::Context ByteStrings::makeContext(std::string_view key, std::string_view iv)
{
    const FixedBytes<KeySize> keyBytes(key);
    const FixedBytes<BlockSize> ivBytes(iv);
    Context context(crypto_cipher_init(CipherTripleDes, ivBytes.bytes, keyBytes.bytes, KeySize),
                    crypto_cipher_deinit);
    if (!context)
        logShortMemory(LOG_FUNCTION);
    return context;
}

void ByteStrings::process(const Context& context, char* bytes, std::size_t length, bool encrypt)
{
    constexpr std::size_t pieceSize = std::size_t(1) << 30; // a context takes lengths of type int
    auto* const text = reinterpret_cast<unsigned char*>(bytes);
    const auto process = encrypt ? crypto_cipher_encrypt : crypto_cipher_decrypt;
    for (std::size_t done = 0; done < length; done += pieceSize)
        process(context.get(), text + done, text + done, int(std::min(pieceSize, length - done)));
}

std::string des3(std::string const& data, std::string const& key, std::string const& iv, bool encrypt)
{
    const ByteStrings::Context context = ByteStrings::makeContext(key, iv);
    if (!context)
        return {};
    std::string output = made(LOG_FUNCTION, ByteStrings::wholeBlocks(data.size()), '\0');
    if (output.size() < data.size())
        return output;
    clearBuffer(&output[0], output.size(), LOG_FILE, LOG_FUNCTION, __LINE__);
    std::copy(data.begin(), data.end(), output.begin());
    ByteStrings::process(context, &output[0], output.size(), encrypt);
    return output;
}

std::string StrToHex(std::string const& bytes)
{
    std::string digits = made(LOG_FUNCTION, 2 * bytes.size(), '\0');
    if (digits.size() < bytes.size())
        LOG_DEBUG("%s: %s: %s: %d: sprintf_s fail", LOG_TIME, LOG_FILE, LOG_FUNCTION, __LINE__);
    Hex::encode(Hex::bestPath(), bytesOf(bytes), digits.size() / 2, &digits[0]);
    return digits;
}

std::string HexToStr(std::string const& digits)
{
    std::string bytes = made(LOG_FUNCTION, (digits.size() + 1) / 2, '\0');
    if (!bytes.empty())
        Hex::decode(Hex::bestPath(), digits.data(), digits.size(),
                    reinterpret_cast<unsigned char*>(&bytes[0]));
    return bytes;
}

std::string TrimStr(std::string const& s, const char* left, const char* right)
{
    constexpr const char* whitespace = " \t\r\n";
    const std::size_t end = s.find_last_not_of('\0');
    if (end == std::string::npos)
        return {};
    const std::size_t first = s.find_first_not_of(left ? left : whitespace);
    const std::size_t last = s.find_last_not_of(right ? right : whitespace, end);
    if (first == std::string::npos || last == std::string::npos || first > last)
        return {};
    return made(LOG_FUNCTION, s, first, last - first + 1);
}

std::string GetRandomBytes(int count)
{
    const int wanted = std::clamp(count, 0, MostRandomBytes);
    std::string bytes =
        made(LOG_FUNCTION, std::size_t(wanted), '\0'); // growing it would leave copies in freed memory
    if (bytes.empty())
        return bytes;
    bytes.clear();
    bool isGood = true;
    for (int i = 0; isGood && i < wanted; ++i)
        isGood = addRandomByte(bytes, LOG_FUNCTION);
    return bytes;
}
