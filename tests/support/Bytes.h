#pragma once

#include <QByteArray>

/// A text for functions that take bytes.
inline unsigned char* bytesOf(QByteArray& bytes)
{
    return reinterpret_cast<unsigned char*>(bytes.data());
}

inline const unsigned char* bytesOf(const QByteArray& bytes)
{
    return reinterpret_cast<const unsigned char*>(bytes.constData());
}
