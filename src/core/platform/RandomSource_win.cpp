#include "platform/RandomSource_p.h"

#include <windows.h>

#include <wincrypt.h>

Platform::RandomSource::~RandomSource()
{
    release();
}

bool Platform::RandomSource::acquire()
{
    HCRYPTPROV provider = 0;
    if (m_provider || !CryptAcquireContextW(&provider, nullptr, nullptr, PROV_RSA_FULL, CRYPT_VERIFYCONTEXT))
        return false;
    m_provider = provider;
    return true;
}

bool Platform::RandomSource::draw(void* bytes, std::size_t count)
{
    return m_provider && CryptGenRandom(m_provider, DWORD(count), static_cast<BYTE*>(bytes));
}

bool Platform::RandomSource::release()
{
    const HCRYPTPROV provider = m_provider;
    m_provider = 0;
    return provider && CryptReleaseContext(provider, 0);
}
