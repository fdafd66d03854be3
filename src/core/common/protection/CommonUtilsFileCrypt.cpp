#include "common/CommonUtils.h"

#include "common/ciphers/Base64.h"
#include "common/ciphers/Sha256.h"
#include "common/protection/ProtectedText_p.h"
#include "common/protection/UnbufferedFile_p.h"
#include "platform/Path_p.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace {

enum Operation { EncryptFile = 1, DecryptFile = 2, FingerprintFile = 3 };

/// The key of all files. Changing a fragment makes files that were written before unreadable.
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

/// A hash of the pieces of a file, wiped on destruction.
struct FileHash : Sha256Context
{
    FileHash() { Sha256_Init(this); }
    ~FileHash() { Ciphers::wipe(this, sizeof *this); }
    Q_DISABLE_COPY_MOVE(FileHash)
};

void writeError(const char* words)
{
    std::fputs(words, stderr);
}

/// The log line for a path, cut after 255 bytes.
QByteArray pathLine(bool isCanonical, const char* path, const char* function, int line)
{
    char text[256];
    const char* const format = isCanonical ? "%d : %s : %s : %s : PathCanonicalizeA worked, path : %s"
                                           : "%d : %s : %s : %s : Path canonicalization failed";
    if (std::snprintf(text, sizeof text, format, line, __TIME__, LOG_FILE, function, path) < 0)
        text[0] = '\0';
    return QString::fromLocal8Bit(text).toUtf8();
}

/// Opens the file to read; logs its canonical path and reports a failure to standard error.
UnbufferedFile openInput(const char* path, const char* function)
{
    char canonical[Platform::PathCapacity];
    const bool isCanonical = Platform::canonicalisePath(path, canonical);
    LOG_DEBUG("%s", pathLine(isCanonical, canonical, function, __LINE__).constData());
    UnbufferedFile input = openUnbuffered(isCanonical ? canonical : nullptr, "rb");
    if (!input)
        writeError("File error");
    return input;
}

/// The size of a file; negative when it cannot be measured.
long sizeOf(std::FILE* file)
{
    const long size = std::fseek(file, 0, SEEK_END) == 0 ? std::ftell(file) : -1;
    std::rewind(file);
    return size;
}

/// Reads `size` bytes in pieces as large as the buffer and passes them on up to the first zero byte.
/// @return false when fewer bytes arrive
template <typename Take>
bool readPieces(std::FILE* file, std::size_t size, const WipedBuffer& buffer, Take take)
{
    bool hasEnded = false;
    for (std::size_t left = size; left > 0;) {
        const std::string_view piece(buffer.data(), std::min(left, buffer.size()));
        if (std::fread(buffer.data(), 1, piece.size(), file) != piece.size())
            return false;
        const std::string_view text = piece.substr(0, piece.find('\0'));
        if (!hasEnded)
            take(text);
        hasEnded = hasEnded || text.size() < piece.size();
        left -= piece.size();
    }
    return size > 0 || std::fread(buffer.data(), 1, 1, file) == 1 || !std::ferror(file); // folders fail
}

/// Reads a file to its end, even if its text ends earlier. Problems are reported to standard error.
/// @param largestPiece limits the buffer, which must outlive what is passed on
template <typename Take>
bool readFile(std::FILE* file, std::size_t largestPiece, WipedBuffer& buffer, Take take, const char* function)
{
    const long size = sizeOf(file);
    const std::size_t count = size > 0 ? std::size_t(size) : 0;
    const bool hasMemory = count < PTRDIFF_MAX && // folders may claim to be that large
                           buffer.allocate(std::min(count + 1, largestPiece), LOG_FILE, function, __LINE__);
    if (!hasMemory)
        writeError("Memory error");
    if (size < 1)
        LOG_DEBUG("%s: %s: %s:size is negative", LOG_TIME, LOG_FILE, function);
    if (hasMemory && size >= 0 && readPieces(file, count, buffer, take))
        return true;
    writeError("Reading error");
    return false;
}

/// Replaces a file by pieces until one is empty. A failure to open it is not reported, one to write it is.
/// @param path null writes nothing
template <typename NextPiece>
void writeFile(const char* path, const char* mode, NextPiece nextPiece, const char* function)
{
    UnbufferedFile file = openUnbuffered(path, mode);
    if (!file)
        return;
    bool isWritten = true;
    for (std::string_view piece = nextPiece(); isWritten && !piece.empty(); piece = nextPiece())
        isWritten = std::fwrite(piece.data(), 1, piece.size(), file.get()) == piece.size();
    if (std::fclose(file.release()) != 0 || !isWritten) // some file systems report errors only when closing
        LOG_WARNING("%s: %s: %s: the result cannot be written", LOG_TIME, LOG_FILE, function);
}

void writeConverted(ProtectedText::Direction direction, std::string_view text, const char* path,
                    const char* function)
{
    ProtectedText codec(direction, text, FileKey().text(), function);
    if (!codec.hasMemory())
        writeError("Memory error");
    else
        writeFile(
            path, "wb", [&codec] { return codec.next(); }, function);
}

void writeFingerprint(FileHash& hash, const char* path, const char* function)
{
    unsigned char digest[Sha256DigestSize] = {}, encoded[256] = {};
    if (hash.length > 0) // sha256() refuses an empty message
        Sha256_Final(&hash, digest);
    else
        LOG_DEBUG("%s: %s: %s:Hashing Fail", LOG_TIME, LOG_FILE, function);
    unsigned size = sizeof encoded;
    if (cl_base64Encode(digest, sizeof digest, encoded, &size) != 0)
        LOG_DEBUG("%s: %s: %s:Encoding fail", LOG_TIME, LOG_FILE, function);
    const auto next = [left = std::string_view(reinterpret_cast<const char*>(encoded), size)]() mutable {
        return std::exchange(left, {});
    };
    writeFile(path, "w", next, function);
}

} // namespace

int CommonUtils::FileCrypt(int operation, const char* inputPath, const char* outputPath)
{
    constexpr std::size_t pieceSize = std::size_t(128) * 1024; // stays in the processor's cache
    const UnbufferedFile input = openInput(inputPath, LOG_FUNCTION);
    if (!input)
        return 0;

    // The whole file is read before the output is opened: they may be the same.
    const bool isConversion = operation == EncryptFile || operation == DecryptFile;
    WipedBuffer buffer;
    FileHash hash;
    std::string_view text;
    const auto take = [&](std::string_view piece) {
        text = piece;
        if (operation == FingerprintFile)
            Sha256_Update(&hash, reinterpret_cast<const unsigned char*>(piece.data()), piece.size());
    };
    if (!readFile(input.get(), isConversion ? SIZE_MAX : pieceSize, buffer, take, LOG_FUNCTION))
        return 0;
    if (isConversion)
        writeConverted(operation == EncryptFile ? ProtectedText::Encrypt : ProtectedText::Decrypt, text,
                       outputPath, LOG_FUNCTION);
    else if (operation == FingerprintFile)
        writeFingerprint(hash, outputPath, LOG_FUNCTION);
    else
        LOG_DEBUG("%s: %s: %s: %d : Invalid operation parameter", LOG_TIME, LOG_FILE, LOG_FUNCTION,
                  operation);
    return 0;
}
