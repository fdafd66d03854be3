#pragma once

#include <cstddef>
#include <memory>

/// What CommonUtils::FileCrypt() does with the text of a file. The text comes in pieces that stay in the
/// processor's cache from one step to the next. Nothing is written before all of it was read: the result may
/// replace the file that it comes from.
class FileOperation
{
public:
    static constexpr std::size_t PieceSize = 128 * 1024;

    /// Null when memory is short. An operation that does not exist only logs its number in the end.
    static std::unique_ptr<FileOperation> make(int operation);

    FileOperation() = default;
    virtual ~FileOperation() = default;
    FileOperation(const FileOperation&) = delete;
    FileOperation& operator=(const FileOperation&) = delete;

    /// Gets room for a text of at most so many bytes; false when memory is short.
    virtual bool reserve(std::size_t size) = 0;

    /// Takes the next piece of the text. All but the last one have PieceSize bytes.
    virtual void add(const char* piece, std::size_t size) = 0;

    /// Writes the result. Nothing is written if the file cannot be opened; it stays as it is if memory is
    /// short.
    virtual void write(const char* path) = 0;
};
