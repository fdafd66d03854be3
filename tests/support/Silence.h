#pragma once

#include <QByteArray>

/// A sound file of three seconds, at 8000 bytes a second.
inline QByteArray silence()
{
    return QByteArray::fromHex("52494646e45d000057415645666d742010000000"
                               "01000100401f0000401f000001000800"
                               "64617461c05d0000") +
           QByteArray(3 * 8000, char(0x80));
}
