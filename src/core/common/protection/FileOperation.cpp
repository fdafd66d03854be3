#include "common/protection/FileOperation_p.h"

#include "common/ByteStrings.h"
#include "common/ciphers/Base64.h"
#include "common/ciphers/Hex_p.h"
#include "common/ciphers/Sha256.h"
#include "common/ciphers/Wipe_p.h"
#include "common/protection/ByteStrings_p.h"
#include "common/protection/UnbufferedFile_p.h"
#include "common/protection/WipedBuffer_p.h"

#include <algorithm>
#include <cstring>

namespace {

using ByteStrings::BlockSize;

constexpr std::size_t PieceSize = FileOperation::PieceSize;
constexpr const char* Function = "FileCrypt"; ///< for log lines

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

/// The file that gets the result. That it cannot be opened is not told, that it cannot be written is.
class ResultFile
{
public:
    /// @param path null opens nothing
    ResultFile(const char* path, const char* mode)
        : m_file(openUnbuffered(path, mode))
    {
    }
    ~ResultFile()
    {
        if (m_file && std::fclose(m_file.release()) != 0) // some file systems find out only now
            logFailure();
    }
    Q_DISABLE_COPY_MOVE(ResultFile)

    bool isOpen() const { return m_file != nullptr; }

    /// False when not everything could be written.
    bool write(const void* bytes, std::size_t size) const
    {
        const bool isWritten = size == 0 || std::fwrite(bytes, 1, size, m_file.get()) == size;
        if (!isWritten)
            logFailure();
        return isWritten;
    }

private:
    static void logFailure()
    {
        LOG_WARNING("%s: %s: %s: the result cannot be written", LOG_TIME, LOG_FILE, Function);
    }

    UnbufferedFile m_file;
};

/// A vector and the whole blocks that belong to it, which are changed in place, piece by piece.
class Blocks
{
public:
    bool reserve(std::size_t textSize)
    {
        return m_bytes.allocate(BlockSize + ByteStrings::wholeBlocks(textSize), LOG_FILE, Function, __LINE__);
    }

    /// Vector and text.
    char* data() const { return m_bytes.data(); }
    unsigned char* bytes() const { return m_bytes.bytes(); }

    /// Null when memory is short.
    ByteStrings::Context makeContext() const
    {
        return ByteStrings::makeContext(FileKey().text(), {data(), BlockSize});
    }

    /// Has each piece of a text enciphered or deciphered, and passes it on until that fails.
    template <typename Pass>
    void process(const ByteStrings::Context& context, std::size_t textSize, bool encrypt, Pass pass) const
    {
        char* piece = data() + BlockSize;
        std::memset(piece + textSize, 0, ByteStrings::wholeBlocks(textSize) - textSize);
        for (std::size_t left = ByteStrings::wholeBlocks(textSize); left > 0;) {
            const std::size_t size = std::min(left, PieceSize);
            ByteStrings::process(context, piece, size, encrypt);
            if (!pass(piece, size))
                return;
            piece += size;
            left -= size;
        }
    }

private:
    WipedBuffer m_bytes;
};

/// Does to a whole file what CommonUtils::Encrypt() does to a text.
class Encipher final : public FileOperation
{
public:
    bool reserve(std::size_t size) override
    {
        m_digits.reset(new (std::nothrow) char[2 * PieceSize]);
        return m_digits && m_blocks.reserve(size);
    }

    void add(const char* piece, std::size_t size) override
    {
        std::memcpy(m_blocks.data() + BlockSize + m_textSize, piece, size);
        m_textSize += size;
    }

    void write(const char* path) override
    {
        const std::string vector = ByteStrings::newVector();
        std::copy(vector.begin(), vector.end(), m_blocks.data());
        const ByteStrings::Context context = m_blocks.makeContext();
        const ResultFile file(context ? path : nullptr, "wb");
        if (!file.isOpen() || !writeDigits(file, m_blocks.data(), BlockSize))
            return;
        m_blocks.process(context, m_textSize, true,
                         [&](const char* piece, std::size_t size) { return writeDigits(file, piece, size); });
    }

private:
    bool writeDigits(const ResultFile& file, const char* bytes, std::size_t size) const
    {
        Hex::encode(Hex::bestPath(), reinterpret_cast<const std::uint8_t*>(bytes), size, m_digits.get());
        return file.write(m_digits.get(), 2 * size);
    }

    Blocks m_blocks;
    std::unique_ptr<char[]> m_digits;
    std::size_t m_textSize = 0;
};

/// The reverse. The file is emptied if its text is too short to be a protected one.
class Decipher final : public FileOperation
{
public:
    bool reserve(std::size_t size) override { return m_blocks.reserve(size / 2 + 1); }

    void add(const char* piece, std::size_t size) override
    {
        Hex::decode(Hex::bestPath(), piece, size, m_blocks.bytes() + m_digits / 2);
        m_digits += size;
    }

    void write(const char* path) override
    {
        const bool isProtected = ByteStrings::isProtectedText(m_digits);
        if (!isProtected)
            LOG_DEBUG("out of range exception");
        const ByteStrings::Context context = m_blocks.makeContext();
        const ResultFile file(context ? path : nullptr, "wb");
        if (!file.isOpen() || !isProtected)
            return;
        m_blocks.process(context, (m_digits + 1) / 2 - BlockSize, false, [&](char* piece, std::size_t size) {
            const std::size_t length = textLength(piece, size);
            const bool isDone = !file.write(piece, length) || length < size;
            Ciphers::wipe(piece, size);
            return !isDone;
        });
    }

private:
    Blocks m_blocks;
    std::size_t m_digits = 0;
};

class Fingerprint final : public FileOperation
{
public:
    Fingerprint() { Sha256_Init(&m_hash); }
    ~Fingerprint() override { Ciphers::wipe(&m_hash, sizeof m_hash); }
    Q_DISABLE_COPY_MOVE(Fingerprint)

    bool reserve(std::size_t) override { return true; }

    void add(const char* piece, std::size_t size) override
    {
        Sha256_Update(&m_hash, reinterpret_cast<const unsigned char*>(piece), size);
    }

    void write(const char* path) override
    {
        unsigned char digest[Sha256DigestSize] = {}, encoded[256] = {};
        if (m_hash.length > 0) // as for sha256(), there is no hash of an empty text
            Sha256_Final(&m_hash, digest);
        else
            LOG_DEBUG("%s: %s: %s:Hashing Fail", LOG_TIME, LOG_FILE, Function);
        unsigned size = sizeof encoded;
        if (cl_base64Encode(digest, sizeof digest, encoded, &size) != 0)
            LOG_DEBUG("%s: %s: %s:Encoding fail", LOG_TIME, LOG_FILE, Function);
        const ResultFile file(path, "w");
        if (file.isOpen())
            file.write(encoded, size);
    }

private:
    Sha256Context m_hash;
};

class Unknown final : public FileOperation
{
public:
    explicit Unknown(int operation)
        : m_operation(operation)
    {
    }

    bool reserve(std::size_t) override { return true; }
    void add(const char*, std::size_t) override {}
    void write(const char*) override
    {
        LOG_DEBUG("%s: %s: %s: %d : Invalid operation parameter", LOG_TIME, LOG_FILE, Function, m_operation);
    }

private:
    int m_operation;
};

template <typename Operation, typename... Arguments>
std::unique_ptr<FileOperation> made(Arguments... arguments)
{
    return std::unique_ptr<FileOperation>(new (std::nothrow) Operation(arguments...));
}

} // namespace

std::unique_ptr<FileOperation> FileOperation::make(int operation)
{
    switch (operation) {
    case 1:
        return made<Encipher>();
    case 2:
        return made<Decipher>();
    case 3:
        return made<Fingerprint>();
    default:
        return made<Unknown>(operation);
    }
}
