#pragma once

#include "common/protection/ByteStrings_p.h"
#include "common/protection/WipedBuffer_p.h"

#include <string>

/// Converts between plaintext and protected text, piece by piece: a string is one piece or a few, a large file
/// many.
///
/// Protected text is the hexadecimal form of a random vector of eight bytes and of the encrypted plaintext,
/// which is padded with zero bytes to whole blocks.
class ProtectedText
{
public:
    enum Direction { Encrypt, Decrypt };

    /// @param input    plaintext, which ends before its first zero byte, or digits; must outlive this object
    /// @param function the function that log lines name
    ProtectedText(Direction direction, std::string_view input, std::string_view passPhrase,
                  const char* function);

    /// False when the digits are too few for a vector, which is logged. There are no pieces then.
    bool hasVector() const { return m_hasVector; }

    /// False when memory is short, which is logged. next() must not be called then.
    bool hasMemory() const { return m_context && m_buffer.data(); }

    /// The length of all pieces; of plaintext its upper bound.
    std::size_t size() const { return m_size; }

    /// The next piece of the result, valid until the next call; empty at the end. Plaintext ends before its
    /// first zero byte.
    std::string_view next() { return m_direction == Encrypt ? nextDigits() : nextPlaintext(); }

private:
    std::string_view nextDigits();
    std::string_view nextPlaintext();

    Direction m_direction;
    std::string_view m_input; ///< what is left of it
    std::string m_vector;
    bool m_hasVector = true;
    bool m_isVectorDue = true;
    std::size_t m_size = 0;
    std::size_t m_pieceSize = 0; ///< bytes in each piece
    ByteStrings::Context m_context;
    WipedBuffer m_buffer;
};
