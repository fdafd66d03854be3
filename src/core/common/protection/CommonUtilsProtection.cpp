#include "common/CommonUtils.h"

#include "common/ciphers/Base64.h"
#include "common/ciphers/Sha256.h"
#include "common/ciphers/Wipe_p.h"
#include "common/protection/ClearBuffer_p.h"
#include "common/protection/ProtectedText_p.h"

#include <qrvl.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>

namespace {

constexpr std::size_t ImeiBufferSize = 24;

using Result = std::unique_ptr<char[]>;

/// A zero-filled string of this capacity for the caller; null when memory is short, which is logged.
Result makeResult(std::size_t length, const char* function)
{
    Result result(length < PTRDIFF_MAX ? new (std::nothrow) char[length + 1] : nullptr);
    clearBuffer(result.get(), length + 1, LOG_FILE, function, __LINE__);
    if (!result)
        LOG_DEBUG("%s: %s: %s: %d: strncpy  fail", LOG_TIME, LOG_FILE, function, __LINE__);
    return result;
}

/// Stores the encrypted or decrypted text in `result`, which stays as it is on failure.
void convert(ProtectedText::Direction direction, const char* text, const char* passPhrase, char*& result,
             const char* function)
{
    if (!text || !passPhrase)
        return;
    ProtectedText codec(direction, text, passPhrase, function);
    Result made = codec.hasVector() ? makeResult(codec.size(), function) : nullptr;
    if (!made || !codec.hasMemory())
        return;
    char* end = made.get();
    for (std::string_view piece = codec.next(); !piece.empty(); piece = codec.next())
        end += piece.copy(end, piece.size());
    *end = '\0';
    result = made.release();
}

/// Copies a string and terminates it. False, with nothing written, when the buffer is too small.
bool copyText(char* buffer, std::size_t size, const char* text, std::size_t length)
{
    if (length >= size)
        return false;
    std::memcpy(buffer, text, length);
    buffer[length] = '\0';
    return true;
}

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

/// @param reversed, digest zero-filled work buffers
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
    convert(ProtectedText::Encrypt, plain, passPhrase, result, LOG_FUNCTION);
}

void CommonUtils::Decrypt(const char* protectedText, const char* passPhrase, char*& result)
{
    convert(ProtectedText::Decrypt, protectedText, passPhrase, result, LOG_FUNCTION);
}

void CommonUtils::CryptLocalFree(char* p)
{
    if (p)
        Ciphers::wipe(p, std::strlen(p));
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
