#include "common/CommonUtils.h"

#include "common/ByteStrings.h"
#include "common/ciphers/Base64.h"
#include "common/ciphers/Hex_p.h"
#include "common/ciphers/Sha256.h"
#include "common/ciphers/Wipe_p.h"
#include "common/protection/ByteStrings_p.h"
#include "common/protection/ClearBuffer_p.h"

#include <qrvl.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>

namespace {

using ByteStrings::BlockSize;

constexpr std::size_t ImeiBufferSize = 24;

using Result = std::unique_ptr<char[]>;

/// A text of so many characters for the caller, zeros below 2 GiB, or null when memory is short, which log
/// lines tell. It is filled in place: of a long text there should not be more copies than needed.
Result makeResult(std::size_t length, const char* function)
{
    Result result(length < PTRDIFF_MAX ? new (std::nothrow) char[length + 1] : nullptr);
    clearBuffer(result.get(), length + 1, LOG_FILE, function, __LINE__);
    if (result)
        result[length] = '\0'; // also behind what is too long for QRVL_memset
    else
        LOG_DEBUG("%s: %s: %s: %d: strncpy  fail", LOG_TIME, LOG_FILE, function, __LINE__);
    return result;
}

unsigned char* bytesOf(char* text)
{
    return reinterpret_cast<unsigned char*>(text);
}

/// The result's last bytes are what its digits stand for, until these replace them.
Result encrypt(const char* plain, const char* passPhrase)
{
    const std::string vector = ByteStrings::newVector();
    const std::size_t length = std::strlen(plain), filled = ByteStrings::wholeBlocks(length);
    const std::size_t size = BlockSize + filled;
    const std::size_t digits = size < PTRDIFF_MAX / 2 ? 2 * size : PTRDIFF_MAX; // more than there can be
    const ByteStrings::Context context = ByteStrings::makeContext(passPhrase, vector);
    Result result = makeResult(digits, "Encrypt");
    if (!context || !result)
        return {};
    char* const bytes = result.get() + size;
    std::memcpy(bytes, vector.data(), BlockSize);
    std::memcpy(bytes + BlockSize, plain, length);
    std::memset(bytes + BlockSize + length, 0, filled - length);
    ByteStrings::process(context, bytes + BlockSize, filled, true);
    Hex::encode(Hex::bestPath(), bytesOf(bytes), size, result.get());
    return result;
}

Result decrypt(const char* protectedText, const char* passPhrase)
{
    const std::size_t digits = std::strlen(protectedText), size = (digits + 1) / 2;
    if (!ByteStrings::isProtectedText(digits)) {
        LOG_DEBUG("out of range exception");
        return {};
    }
    const std::size_t vectorDigits = std::min(digits, 2 * BlockSize);
    char vector[BlockSize];
    Hex::decode(Hex::bestPath(), protectedText, vectorDigits, bytesOf(vector));
    const ByteStrings::Context context = ByteStrings::makeContext(passPhrase, {vector, BlockSize});
    const std::size_t filled = ByteStrings::wholeBlocks(size - BlockSize);
    Result result = makeResult(filled, "Decrypt"); // it may end with more zeros than one
    if (!context || !result)
        return {};
    Hex::decode(Hex::bestPath(), protectedText + vectorDigits, digits - vectorDigits, bytesOf(result.get()));
    std::memset(result.get() + (size - BlockSize), 0, filled - (size - BlockSize));
    ByteStrings::process(context, result.get(), filled, false);
    const std::size_t length = std::strlen(result.get());
    Ciphers::wipe(result.get() + length, filled - length); // what no caller can see, and so not wipe either
    return result;
}

/// Without a new result the old one stays.
void give(Result made, char*& result)
{
    if (made)
        result = made.release();
}

/// Copies a text into a buffer and puts a zero behind it. Without the room nothing is written: false.
bool copyText(char* buffer, std::size_t size, const char* text, std::size_t length)
{
    if (length >= size)
        return false;
    std::memcpy(buffer, text, length);
    buffer[length] = '\0';
    return true;
}

/// @param reversed zero-filled
bool reverseImei(const char* imei, char (&reversed)[ImeiBufferSize])
{
    LOG_DEBUG("[Handle_imei_reverse]enter.\n");
    const std::size_t length = std::strlen(imei);
    if (length >= ImeiBufferSize) {
        LOG_DEBUG("[Handle_imei_reverse]out_para_len error.\n");
        return false;
    }
    if (!copyText(reversed, ImeiBufferSize, imei, length))
        LOG_DEBUG("%s: %s: %s: %d: strncpy_s fail", LOG_TIME, LOG_FILE, LOG_FUNCTION, __LINE__);
    std::reverse(reversed, reversed + length);
    LOG_DEBUG("[Handle_imei_reverse]out success.\n");
    return true;
}

/// @param reversed, digest zero-filled
bool makeToken(const char* imei, char (&reversed)[ImeiBufferSize], unsigned char (&digest)[256], char* token)
{
    if (!reverseImei(imei, reversed)) {
        LOG_DEBUG("[Handle_imei_hash]reverse imei failed.\n");
        return false;
    }
    if (sha256(reinterpret_cast<const unsigned char*>(reversed), unsigned(std::strlen(reversed)), digest) !=
        0) {
        LOG_DEBUG("[Handle_imei_hash]hash imei failed.\n");
        return false;
    }
    unsigned capacity = sizeof digest;
    if (cl_base64Encode(digest, Sha256DigestSize, reinterpret_cast<unsigned char*>(token), &capacity) != 0) {
        LOG_DEBUG("[Handle_imei_hash]imei base64 encode error.\n");
        return false;
    }
    LOG_DEBUG("[Handle_imei_hash]get out sucess.\n");
    return true;
}

} // namespace

void CommonUtils::Encrypt(const char* plain, const char* passPhrase, char*& result)
{
    if (plain && passPhrase)
        give(encrypt(plain, passPhrase), result);
}

void CommonUtils::Decrypt(const char* protectedText, const char* passPhrase, char*& result)
{
    if (protectedText && passPhrase)
        give(decrypt(protectedText, passPhrase), result);
}

void CommonUtils::CryptLocalFree(char* p)
{
    delete[] p;
}

bool CommonUtils::Handle_IMEI_Hash(const char* imei, char* token)
{
    if (!imei || !token) {
        LOG_DEBUG("[Handle_imei_hash]null para.\n");
        return false;
    }
    char reversed[ImeiBufferSize];
    unsigned char digest[256];
    clearBuffer(reversed, sizeof reversed, LOG_FILE, LOG_FUNCTION, __LINE__);
    clearBuffer(digest, sizeof digest, LOG_FILE, LOG_FUNCTION, __LINE__);
    const bool isMade = makeToken(imei, reversed, digest, token);
    Ciphers::wipe(reversed, sizeof reversed);
    Ciphers::wipe(digest, sizeof digest);
    return isMade;
}

QString CommonUtils::getIMSI()
{
    LOG_DEBUG("%s: %s: called", LOG_FILE, LOG_FUNCTION);
    char imsi[QRVL_IMSI_SIZE] = {};
    if (QRVL_DevSrv_GetImsiInfo(imsi) == 0)
        return QString::fromUtf8(imsi, int(qstrnlen(imsi, sizeof imsi)));
    LOG_DEBUG("<========= %s: %s: %s: QRVL_DevSrv_GetImsiInfo success", LOG_TIME, LOG_FILE, LOG_FUNCTION);
    return {};
}
