#pragma once

#include "common/CommonUtils.h"

#include <QByteArray>

constexpr char PassPhrase[] = "only for the tests of it";

/// What CommonUtils::Encrypt() or Decrypt() gives; null for no result.
inline QByteArray converted(void (*operation)(const char*, const char*, char*&), const char* text,
                            const char* passPhrase = PassPhrase)
{
    char* result = nullptr;
    operation(text, passPhrase, result);
    const QByteArray copy(result);
    CommonUtils::CryptLocalFree(result);
    return copy;
}
