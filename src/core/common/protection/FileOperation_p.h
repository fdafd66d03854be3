#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>

/// What CommonUtils::FileCrypt() does with the text of a file. The text comes in pieces that stay in the
/// processor's cache from one step to the next. Nothing is written before all of it was read: the result may
/// replace the file that it comes from.
class FileOperation
{
public:
    static constexpr std::size_t PieceSize = std::size_t(128) * 1024;
    static constexpr std::size_t LargestSize = PTRDIFF_MAX - 64; ///< folders may claim to be larger

    /// Null when memory is short. An operation that does not exist only logs its number in the end.
    static std::unique_ptr<FileOperation> make(int operation);

    /// The length of what comes before a zero.
    static std::size_t textLength(const char* piece, std::size_t size)
    {
        const void* const zero = std::memchr(piece, '\0', size);
        return zero ? std::size_t(static_cast<const char*>(zero) - piece) : size;
    }

    FileOperation() = default;
    virtual ~FileOperation() = default;
    FileOperation(const FileOperation&) = delete;
    FileOperation& operator=(const FileOperation&) = delete;

    /// Gets room for a text of at most so many bytes, LargestSize or less; false when memory is short.
    virtual bool reserve(std::size_t size) = 0;

    /// Takes the next piece of the text. All but the last one have PieceSize bytes.
    virtual void add(const char* piece, std::size_t size) = 0;

    /// Writes the result. The file stays as it is if memory is short; of a result that cannot be written
    /// whole it has the beginning.
    virtual void write(const char* path) = 0;
};
