#pragma once

#include "common/ciphers/Wipe_p.h"
#include "common/protection/ClearBuffer_p.h"

#include <cstdint>
#include <memory>
#include <new>

/// Memory for keys and plaintext, which is wiped before it is released.
class WipedBuffer
{
public:
    WipedBuffer() = default;
    ~WipedBuffer() { Ciphers::wipe(m_bytes.get(), m_size); }
    WipedBuffer(const WipedBuffer&) = delete;
    WipedBuffer& operator=(const WipedBuffer&) = delete;

    /// Allocates memory; call it once. It is zero-filled below 2 GiB; above that it is uninitialised, which is
    /// logged with the caller's location.
    /// @return false when memory is short, which is logged as well
    bool allocate(std::size_t size, const char* file, const char* function, int line)
    {
        m_bytes.reset(size <= PTRDIFF_MAX ? new (std::nothrow) char[size] : nullptr);
        clearBuffer(m_bytes.get(), size, file, function, line);
        m_size = m_bytes ? size : 0;
        return m_bytes != nullptr;
    }

    char* data() const { return m_bytes.get(); }
    std::size_t size() const { return m_size; }

private:
    std::unique_ptr<char[]> m_bytes;
    std::size_t m_size = 0;
};
