#include "platform/RandomSource_p.h"

#include <cerrno>
#include <sys/random.h>

Platform::RandomSource::~RandomSource()
{
    release();
}

bool Platform::RandomSource::acquire()
{
    if (m_provider)
        return false;
    m_provider = 1; // there is no handle
    return true;
}

bool Platform::RandomSource::draw(void* bytes, std::size_t count)
{
    if (!m_provider)
        return false;
    auto* next = static_cast<char*>(bytes);
    while (count > 0) {
        const ssize_t drawn = getrandom(next, count, 0);
        if (drawn < 0 && errno != EINTR) // EINTR: a signal came first
            return false;
        if (drawn > 0) {
            next += drawn;
            count -= std::size_t(drawn);
        }
    }
    return true;
}

bool Platform::RandomSource::release()
{
    const bool wasAcquired = m_provider != 0;
    m_provider = 0;
    return wasAcquired;
}
