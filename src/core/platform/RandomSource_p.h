#pragma once

#include "skylume_global.h"

#include <cstddef>

namespace Platform {

/// The system's source of random bytes fit for cryptography, used in three steps: acquire(), draw() as often
/// as needed, release(). Every step says whether it succeeded. On Windows it is a provider of the crypto
/// interface, taken without a key container; on Linux the kernel, where acquiring and releasing cost nothing.
///
/// An object serves one thread. What is still acquired when it is destroyed is released.
class SKYLUME_EXPORT RandomSource
{
public:
    RandomSource() = default;
    ~RandomSource();
    Q_DISABLE_COPY_MOVE(RandomSource)

    /// Takes the source. False when the system has none to give, or when it is taken already.
    bool acquire();

    /// Fills a buffer with random bytes.
    /// @param bytes buffer of at least count bytes; undefined content on failure
    /// @return false when the source is not acquired or failed
    bool draw(void* bytes, std::size_t count);

    /// Gives the source back. False when it was not acquired or the system refused.
    bool release();

private:
    quintptr m_provider = 0; // 0 while not acquired
};

} // namespace Platform
