#include "common/protection/ProtectedText_p.h"

#include "common/ByteStrings.h"
#include "common/ciphers/Hex_p.h"

#include <algorithm>
#include <cstring>

using namespace ByteStrings;

namespace {

constexpr std::size_t VectorDigits = 2 * BlockSize;

/// Pieces of this size stay in the processor's cache between the steps.
constexpr std::size_t LargestPiece = std::size_t(128) * 1024;

unsigned char* unsignedBytes(char* bytes)
{
    return reinterpret_cast<unsigned char*>(bytes);
}

/// Bytes that the random source did not supply are zeros: the text can still be decrypted.
std::string newVector()
{
    std::string vector = GetRandomBytes(BlockSize);
    vector.resize(BlockSize, '\0');
    return vector;
}

std::string readVector(std::string_view digits)
{
    std::string vector(BlockSize, '\0');
    Hex::decode(Hex::bestPath(), digits.data(), std::min(digits.size(), VectorDigits),
                unsignedBytes(&vector[0]));
    return vector;
}

/// The number of digits for a plaintext; more than memory can hold where it would overflow.
std::size_t digitsFor(std::size_t length)
{
    return length < PTRDIFF_MAX / 2 - VectorDigits ? VectorDigits + 2 * wholeBlocks(length) : PTRDIFF_MAX;
}

} // namespace

ProtectedText::ProtectedText(Direction direction, std::string_view input, std::string_view passPhrase,
                             const char* function)
    : m_direction(direction)
    , m_input(input)
    , m_vector(direction == Encrypt ? newVector() : readVector(input))
    , m_context(makeContext(passPhrase, m_vector))
{
    std::size_t bytes = input.size();
    if (direction == Decrypt) {
        m_hasVector = (input.size() + 1) / 2 >= BlockSize;
        if (!m_hasVector)
            LOG_DEBUG("out of range exception");
        m_input.remove_prefix(std::min(input.size(), VectorDigits));
        bytes = (m_input.size() + 1) / 2;
    }
    m_size = direction == Encrypt ? digitsFor(bytes) : wholeBlocks(bytes);
    m_pieceSize = std::clamp(wholeBlocks(bytes), BlockSize, LargestPiece);
    m_buffer.allocate((direction == Encrypt ? 2 : 1) * m_pieceSize, LOG_FILE, function, __LINE__);
}

std::string_view ProtectedText::nextDigits()
{
    char* const bytes = m_buffer.data() + m_pieceSize; // overwritten by their digits, each after it was read
    std::size_t size = BlockSize;
    if (m_isVectorDue) {
        m_vector.copy(bytes, size);
        m_isVectorDue = false;
    } else {
        const std::size_t length = m_input.copy(bytes, m_pieceSize);
        m_input.remove_prefix(length);
        size = wholeBlocks(length);
        std::memset(bytes + length, 0, size - length);
        process(m_context, bytes, size, true);
    }
    Hex::encode(Hex::bestPath(), unsignedBytes(bytes), size, m_buffer.data());
    return {m_buffer.data(), 2 * size};
}

std::string_view ProtectedText::nextPlaintext()
{
    char* const bytes = m_buffer.data();
    const std::string_view digits = m_input.substr(0, 2 * m_pieceSize);
    m_input.remove_prefix(digits.size());
    const std::size_t length = (digits.size() + 1) / 2, size = wholeBlocks(length);
    Hex::decode(Hex::bestPath(), digits.data(), digits.size(), unsignedBytes(bytes));
    std::memset(bytes + length, 0, size - length);
    process(m_context, bytes, size, false);
    const std::string_view all(bytes, size), text = all.substr(0, all.find('\0'));
    if (text.size() < all.size())
        m_input = {};
    return text;
}
