#pragma once

#include "common/ciphers/Wipe_p.h"
#include "common/protection/ClearBuffer_p.h"

#include <cstdint>
#include <memory>
#include <new>

/// Memory for keys and plain texts, which is wiped before it is released.
class WipedBuffer
{
public:
    WipedBuffer() = default;
    ~WipedBuffer() { Ciphers::wipe(m_bytes.get(), m_size); }
    WipedBuffer(const WipedBuffer&) = delete;
    WipedBuffer& operator=(const WipedBuffer&) = delete;

    /// Gets so many bytes, once; false when memory is short. They are zeros, but from 2 GiB on, which a log
    /// line in the caller's name tells, they may be anything.
    bool allocate(std::size_t size, const char* file, const char* function, int line)
    {
        m_bytes.reset(new (std::nothrow) char[size]);
        clearBuffer(m_bytes.get(), size, file, function, line);
        m_size = m_bytes ? size : 0;
        return m_bytes != nullptr;
    }

    char* data() const { return m_bytes.get(); }
    unsigned char* bytes() const { return reinterpret_cast<unsigned char*>(m_bytes.get()); }

private:
    std::unique_ptr<char[]> m_bytes;
    std::size_t m_size = 0;
};
