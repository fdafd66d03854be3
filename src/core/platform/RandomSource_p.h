#pragma once

#include "skylume_global.h"

#include <cstddef>

namespace Platform {

/// The system's source of cryptographically secure random bytes: call acquire(), then draw() as often as needed,
/// then release(). On Windows it is a CryptoAPI provider without a key container. On Linux it is the kernel, where
/// acquiring and releasing do nothing.
///
/// Use an object on one thread only. The destructor releases the source if necessary.
class SKYLUME_EXPORT RandomSource
{
public:
    RandomSource() = default;
    ~RandomSource();
    Q_DISABLE_COPY_MOVE(RandomSource)

    /// Acquires the source. Returns false if the system fails or the source is already acquired.
    bool acquire();

    /// Fills a buffer with random bytes.
    /// @param bytes buffer of at least count bytes; its content is undefined on failure
    /// @return false if the source is not acquired or the system fails
    bool draw(void* bytes, std::size_t count);

    /// Releases the source. Returns false if it was not acquired or the system fails.
    bool release();

private:
    quintptr m_provider = 0; // 0 while not acquired
};

} // namespace Platform
