#include "common/CommonUtils.h"

#include "common/protection/FileOperation_p.h"
#include "common/protection/UnbufferedFile_p.h"
#include "common/protection/WipedBuffer_p.h"
#include "platform/Path_p.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace {

void writeError(const char* words)
{
    std::fputs(words, stderr);
}

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

/// Passes on the text before the first zero; false when not as many bytes can be read. Folders may seem to be
/// empty files until they are read.
bool readText(std::FILE* file, std::size_t size, char* piece, FileOperation& operation)
{
    if (size == 0 && std::fread(piece, 1, 1, file) == 0 && std::ferror(file))
        return false;
    bool hasEnded = false;
    for (std::size_t left = size; left > 0;) {
        const std::size_t count = std::min(left, FileOperation::PieceSize);
        if (std::fread(piece, 1, count, file) != count)
            return false;
        if (!hasEnded) {
            const std::size_t length = FileOperation::textLength(piece, count);
            operation.add(piece, length);
            hasEnded = length < count;
        }
        left -= count;
    }
    return true;
}

/// False when not all of the file can be had or it cannot be measured, which standard error tells.
bool readFile(std::FILE* file, FileOperation& operation, const char* function)
{
    const long end = std::fseek(file, 0, SEEK_END) == 0 ? std::ftell(file) : -1;
    std::rewind(file);
    const std::size_t size = end > 0 ? std::size_t(end) : 0;
    WipedBuffer piece;
    const bool hasMemory =
        size <= FileOperation::LargestSize && operation.reserve(size) &&
        piece.allocate(std::min(size + 1, FileOperation::PieceSize), LOG_FILE, function, __LINE__);
    if (!hasMemory)
        writeError("Memory error");
    if (end < 1)
        LOG_DEBUG("%s: %s: %s:size is negative", LOG_TIME, LOG_FILE, function);
    if (hasMemory && end >= 0 && readText(file, size, piece.data(), operation))
        return true;
    writeError("Reading error");
    return false;
}

} // namespace

int CommonUtils::FileCrypt(int operation, const char* inputPath, const char* outputPath)
{
    char canonical[Platform::PathCapacity];
    const bool isCanonical = Platform::canonicalisePath(inputPath, canonical);
    LOG_DEBUG("%s", pathLine(isCanonical, canonical, LOG_FUNCTION, __LINE__).constData());
    const UnbufferedFile input = openUnbuffered(isCanonical ? canonical : nullptr, "rb");
    if (!input) {
        writeError("File error");
        return 0;
    }
    const std::unique_ptr<FileOperation> transformation = FileOperation::make(operation);
    if (!transformation)
        writeError("Memory error");
    else if (readFile(input.get(), *transformation, LOG_FUNCTION))
        transformation->write(outputPath);
    return 0;
}
