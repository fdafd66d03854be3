#include "common/CommonUtils.h"

#include "common/ClearBuffer.h"
#include "common/ciphers/Base64.h"
#include "common/ciphers/Sha256.h"
#include "common/ciphers/Wipe_p.h"
#include "platform/Path.h"

#include <climits>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>
#include <string>

namespace {

using Transform = void (*)(const char* text, const char* passPhrase, char*& result);
using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

File openFile(const char* path, const char* mode)
{
    return {path ? std::fopen(path, mode) : nullptr, &std::fclose};
}

void writeError(const char* words)
{
    std::fputs(words, stderr);
}

/// The key of all files: changing a fragment makes files unreadable that were written before.
std::string fileKey()
{
    static constexpr const char* Fragments[] = {"vT4#qLw9z", "Yx7!mRb2", "hK5&nGd8s"};
    std::string key;
    for (const char* fragment : Fragments)
        key += fragment;
    return key;
}

/// What is said of a path, cut after 255 bytes.
QByteArray pathLine(int line, const char* function, const char* outcome, const char* path)
{
    const QByteArray text =
        QByteArray::number(line) + " : " __TIME__ " : " LOG_FILE " : " + function + " : " + outcome + path;
    return QString::fromLocal8Bit(text.left(255)).toUtf8();
}

/// A whole file as a zero-terminated text, wiped in the end.
class FileText
{
public:
    FileText() = default;
    ~FileText() { Ciphers::wipe(m_text.get(), m_size); }
    Q_DISABLE_COPY_MOVE(FileText)

    /// False after a fault, which standard error tells. A file that cannot be measured counts as empty.
    bool read(std::FILE* file, const char* function)
    {
        const long end = std::fseek(file, 0, SEEK_END) == 0 ? std::ftell(file) : -1;
        std::rewind(file);
        if (!allocate(end, function))
            return false;
        if (end < 1)
            LOG_DEBUG("%s: %s: %s:size is negative", LOG_TIME, LOG_FILE, function);
        if (std::fread(m_text.get(), 1, m_size, file) == m_size)
            return true;
        writeError("Reading error");
        return false;
    }

    const char* text() const { return m_text.get(); }

private:
    bool allocate(long size, const char* function)
    {
        m_size = size > 0 ? std::size_t(size) : 0;
        if (m_size < INT_MAX) // beyond, the operations' lengths end; folders may claim to be endless
            m_text.reset(new (std::nothrow) char[m_size + 1]);
        if (!m_text) {
            m_size = 0;
            writeError("Memory error");
            return false;
        }
        clearBuffer(m_text.get(), m_size + 1, LOG_FILE, function, __LINE__);
        return true;
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

/// Without a result an empty file is left.
void writeTransformed(Transform transform, const char* text, const char* path)
{
    std::string key = fileKey();
    char* result = nullptr;
    transform(text, key.c_str(), result);
    Ciphers::wipe(&key[0], key.size());
    const std::size_t length = qstrlen(result);
    writeFile(path, "wb", result, length);
    Ciphers::wipe(result, length);
    CommonUtils::CryptLocalFree(result);
}

void writeFingerprint(const char* text, const char* path, const char* function)
{
    unsigned char digest[Sha256DigestSize] = {};
    if (sha256(reinterpret_cast<const unsigned char*>(text), qstrlen(text), digest) != 0)
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
    LOG_DEBUG("%s",
              pathLine(__LINE__, LOG_FUNCTION,
                       isCanonical ? "PathCanonicalizeA worked, path : " : "Path canonicalization failed",
                       canonical)
                  .constData());
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
