#include "common/CommonUtils.h"

#include "common/ByteStrings_p.h"
#include "common/ClearBuffer.h"
#include "common/ciphers/Base64.h"
#include "common/ciphers/Sha256.h"
#include "common/ciphers/Wipe_p.h"
#include "platform/Path.h"

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>

namespace {

using Transform = void (*)(const char* text, const char* passPhrase, char*& result);
using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

/// Unbuffered: a file is read and written in one go, and no plain text is to stay behind in a buffer.
File openFile(const char* path, const char* mode)
{
    File file(path ? std::fopen(path, mode) : nullptr, &std::fclose);
    if (file)
        std::setvbuf(file.get(), nullptr, _IONBF, 0);
    return file;
}

void writeError(const char* words)
{
    std::fputs(words, stderr);
}

/// The key of all files: changing a fragment makes files unreadable that were written before.
class FileKey
{
public:
    FileKey()
    {
        for (const char* fragment : {"vT4#qLw9z", "Yx7!mRb2", "hK5&nGd8s"})
            std::strcat(m_text, fragment);
    }
    ~FileKey() { Ciphers::wipe(m_text, sizeof m_text); }
    Q_DISABLE_COPY_MOVE(FileKey)

    const char* text() const { return m_text; }

private:
    char m_text[9 + 8 + 9 + 1] = {};
};

/// What is said of a path, cut after 255 bytes.
QByteArray pathLine(bool isCanonical, const char* path, const char* function, int line)
{
    char text[256];
    const char* const format = isCanonical ? "%d : %s : %s : %s : PathCanonicalizeA worked, path : %s"
                                           : "%d : %s : %s : %s : Path canonicalization failed";
    if (std::snprintf(text, sizeof text, format, line, __TIME__, LOG_FILE, function, path) < 0)
        text[0] = '\0';
    return QString::fromLocal8Bit(text).toUtf8();
}

/// A whole file as a zero-terminated text, wiped in the end.
class FileText
{
public:
    FileText() = default;
    ~FileText() { Ciphers::wipe(m_text.get(), m_size); }
    Q_DISABLE_COPY_MOVE(FileText)

    /// False when not all of the file can be had or it cannot be measured, which standard error tells.
    bool read(std::FILE* file, const char* function)
    {
        const long end = std::fseek(file, 0, SEEK_END) == 0 ? std::ftell(file) : -1;
        std::rewind(file);
        allocate(end, function);
        if (end < 1)
            LOG_DEBUG("%s: %s: %s:size is negative", LOG_TIME, LOG_FILE, function);
        if (m_text && end >= 0 && std::fread(m_text.get(), 1, m_size, file) == m_size)
            return true;
        writeError("Reading error");
        return false;
    }

    const char* text() const { return m_text.get(); }

private:
    void allocate(long end, const char* function)
    {
        const std::size_t size = end > 0 ? std::size_t(end) : 0;
        if (size < PTRDIFF_MAX) // folders may claim to be endless
            m_text.reset(new (std::nothrow) char[size + 1]);
        clearBuffer(m_text.get(), size + 1, LOG_FILE, function, __LINE__);
        if (!m_text) {
            writeError("Memory error");
            return;
        }
        m_size = size;
        m_text[size] = '\0'; // also behind what is too long for QRVL_memset
    }

    std::unique_ptr<char[]> m_text;
    std::size_t m_size = 0;
};

void writeFile(const char* path, const char* mode, const void* bytes, std::size_t size)
{
    const File file = openFile(path, mode);
    if (file && size > 0)
        std::fwrite(bytes, 1, size, file.get());
}

/// A text that is too short to be deciphered leaves an empty file. When it is memory that is short, the
/// output file stays as it is: it may be the input file.
void writeTransformed(Transform transform, const char* text, const char* path)
{
    char* result = nullptr;
    transform(text, FileKey().text(), result);
    if (!result && (transform != CommonUtils::Decrypt || ByteStrings::isProtectedText(std::strlen(text))))
        return;
    const std::size_t length = result ? std::strlen(result) : 0;
    writeFile(path, "wb", result, length);
    Ciphers::wipe(result, length);
    CommonUtils::CryptLocalFree(result);
}

/// sha256(), which does not take texts of 4 GiB.
bool makeDigest(const char* text, unsigned char* digest)
{
    const std::size_t length = std::strlen(text);
    if (length == 0)
        return false;
    Sha256Context context;
    Sha256_Init(&context);
    Sha256_Update(&context, reinterpret_cast<const unsigned char*>(text), length);
    Sha256_Final(&context, digest);
    return true;
}

void writeFingerprint(const char* text, const char* path, const char* function)
{
    unsigned char digest[Sha256DigestSize] = {};
    if (!makeDigest(text, digest))
        LOG_DEBUG("%s: %s: %s:Hashing Fail", LOG_TIME, LOG_FILE, function);
    unsigned char encoded[256] = {};
    unsigned size = sizeof encoded;
    if (cl_base64Encode(digest, sizeof digest, encoded, &size) != 0)
        LOG_DEBUG("%s: %s: %s:Encoding fail", LOG_TIME, LOG_FILE, function);
    writeFile(path, "w", encoded, size);
}

} // namespace

int CommonUtils::FileCrypt(int operation, const char* inputPath, const char* outputPath)
{
    char canonical[Platform::PathCapacity];
    const bool isCanonical = Platform::canonicalisePath(inputPath, canonical);
    LOG_DEBUG("%s", pathLine(isCanonical, canonical, LOG_FUNCTION, __LINE__).constData());
    const File input = isCanonical ? openFile(canonical, "rb") : openFile(nullptr, nullptr);
    if (!input) {
        writeError("File error");
        return 0;
    }
    FileText content;
    if (!content.read(input.get(), LOG_FUNCTION))
        return 0;
    switch (operation) {
    case 1:
        writeTransformed(Encrypt, content.text(), outputPath);
        break;
    case 2:
        writeTransformed(Decrypt, content.text(), outputPath);
        break;
    case 3:
        writeFingerprint(content.text(), outputPath, LOG_FUNCTION);
        break;
    default:
        LOG_DEBUG("%s: %s: %s: %d : Invalid operation parameter", LOG_TIME, LOG_FILE, LOG_FUNCTION,
                  operation);
    }
    return 0;
}
