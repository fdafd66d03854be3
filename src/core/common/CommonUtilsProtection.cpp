#include "common/CommonUtils.h"

#include "common/ByteStrings.h"
#include "common/ByteStrings_p.h"
#include "common/ClearBuffer.h"
#include "common/ciphers/Base64.h"
#include "common/ciphers/Hex_p.h"
#include "common/ciphers/Sha256.h"
#include "common/ciphers/Wipe_p.h"

#include <qrvl.h>

#include <algorithm>
#include <cstring>
#include <new>

namespace {

constexpr std::size_t VectorSize = 8;
constexpr std::size_t MostImeiCharacters = 23;

/// A byte string that is wiped in the end.
struct SecretString
{
    explicit SecretString(std::string text)
        : m_text(std::move(text))
    {
    }
    ~SecretString() { Ciphers::wipe(&m_text[0], m_text.size()); }
    Q_DISABLE_COPY_MOVE(SecretString)

    std::string m_text;
};

/// A zero-filled text of so many characters, or null.
char* allocateResult(std::size_t length, const char* function)
{
    const std::size_t size = length + 1;
    char* const result = new (std::nothrow) char[size];
    if (!result)
        return nullptr;
    clearBuffer(result, size, LOG_FILE, function, __LINE__);
    result[length] = '\0'; // too long for QRVL_memset or not
    return result;
}

char* writeDigits(const std::string& bytes, char* to)
{
    Hex::encode(Hex::bestPath(), reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size(), to);
    return to + 2 * bytes.size();
}

/// The buffer must be zero-filled and have room for one character more than are copied.
bool reverseImei(const char* imei, char* reversed)
{
    LOG_DEBUG("[Handle_imei_reverse]enter.\n");
    const std::size_t length = qstrlen(imei);
    if (length > MostImeiCharacters) {
        LOG_DEBUG("[Handle_imei_reverse]out_para_len error.\n");
        return false;
    }
    std::reverse_copy(imei, imei + length, reversed);
    LOG_DEBUG("[Handle_imei_reverse]out success.\n");
    return true;
}

void encrypt(const char* plain, const char* passPhrase, char*& result)
{
    const SecretString key(passPhrase);
    std::string vector = GetRandomBytes(VectorSize);
    vector.resize(VectorSize, '\0'); // should the system fail, the text can still be read back
    const std::string cipherText = des3(SecretString(plain).m_text, key.m_text, vector, true);
    char* const digits = allocateResult(2 * (VectorSize + cipherText.size()), "Encrypt");
    if (!digits)
        return;
    writeDigits(cipherText, writeDigits(vector, digits));
    result = digits;
}

void decrypt(const char* protectedText, const char* passPhrase, char*& result)
{
    const std::size_t digits = std::strlen(protectedText);
    SecretString bytes(std::string((digits + 1) / 2, '\0'));
    std::string& text = bytes.m_text;
    Hex::decode(Hex::bestPath(), protectedText, digits, reinterpret_cast<unsigned char*>(&text[0]));
    if (text.size() < VectorSize) {
        LOG_DEBUG("out of range exception");
        return;
    }
    text.resize((text.size() + VectorSize - 1) / VectorSize * VectorSize, '\0');
    const SecretString key(passPhrase);
    if (!ByteStrings::des3InPlace(&text[VectorSize], text.size() - VectorSize, key.m_text,
                                  text.substr(0, VectorSize), false))
        text.resize(VectorSize);

    const std::size_t last = text.find_last_not_of('\0');
    const std::size_t length = last == std::string::npos || last < VectorSize ? 0 : last + 1 - VectorSize;
    char* const plain = allocateResult(length, "Decrypt");
    if (!plain)
        return;
    std::memcpy(plain, text.data() + VectorSize, length);
    result = plain;
}

using Transform = void (*)(const char* text, const char* passPhrase, char*& result);

/// Nothing is thrown to plugins: where memory is short, the result stays as it is.
void transform(const char* text, const char* passPhrase, char*& result, Transform work, const char* function)
{
    if (!text || !passPhrase)
        return;
    try {
        work(text, passPhrase, result);
    } catch (const std::bad_alloc&) {
        LOG_WARNING("%s: %s: %s: memory is short", LOG_TIME, LOG_FILE, function);
    }
}

} // namespace

void CommonUtils::Encrypt(const char* plain, const char* passPhrase, char*& result)
{
    transform(plain, passPhrase, result, encrypt, LOG_FUNCTION);
}

void CommonUtils::Decrypt(const char* protectedText, const char* passPhrase, char*& result)
{
    transform(protectedText, passPhrase, result, decrypt, LOG_FUNCTION);
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
    char reversed[MostImeiCharacters + 1];
    unsigned char digest[256];
    clearBuffer(reversed, sizeof reversed, LOG_FILE, LOG_FUNCTION, __LINE__);
    clearBuffer(digest, sizeof digest, LOG_FILE, LOG_FUNCTION, __LINE__);
    if (!reverseImei(imei, reversed)) {
        LOG_DEBUG("[Handle_imei_hash]reverse imei failed.\n");
        return false;
    }
    if (sha256(reinterpret_cast<const unsigned char*>(reversed), qstrlen(reversed), digest) != 0) {
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

QString CommonUtils::getIMSI()
{
    LOG_DEBUG("%s: %s: called", LOG_FILE, LOG_FUNCTION);
    char imsi[QRVL_IMSI_SIZE] = {};
    if (QRVL_DevSrv_GetImsiInfo(imsi) == 0)
        return QString::fromUtf8(imsi, int(qstrnlen(imsi, sizeof imsi)));
    LOG_DEBUG("<========= %s: %s: %s: QRVL_DevSrv_GetImsiInfo success", LOG_TIME, LOG_FILE, LOG_FUNCTION);
    return {};
}
