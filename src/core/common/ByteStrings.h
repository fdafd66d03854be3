#pragma once

#include "skylume_export.h"

#include <string>

/// Operations on byte strings: raw bytes, of which zero is one like any other. They may be called from any
/// thread and do not throw: when memory is short the result is empty, which a log line tells.

/// Enciphers or deciphers with Triple DES in cipher-block-chaining mode. What it protects is said in
/// docs/ciphers.md.
/// @param data filled up with zero bytes to a multiple of eight; these are not taken off after deciphering
/// @param key  cut or filled up with zero bytes to 24
/// @param iv   the first chaining block; cut or filled up with zero bytes to 8
/// @return as many bytes as data has after filling up
SKYLUME_EXPORT std::string des3(std::string const& data, std::string const& key, std::string const& iv,
                                bool encrypt);

/// Two hexadecimal digits for each byte, in upper case.
SKYLUME_EXPORT std::string StrToHex(std::string const& bytes);

/// The bytes that hexadecimal digits of either case stand for, (length + 1) / 2 of them. A character that is
/// no digit keeps its place and counts as 0, as does the one that an odd length lacks.
SKYLUME_EXPORT std::string HexToStr(std::string const& digits);

/// Removes characters from both ends. Zero bytes at the end always go.
/// @param left, right the characters to remove; null stands for blank, tab, carriage return and line feed
SKYLUME_EXPORT std::string TrimStr(std::string const& s, const char* left = nullptr,
                                   const char* right = nullptr);

/// Random bytes fit for cryptography, each drawn from the system by itself.
/// @param count 0 to 128; other values are brought into this range
/// @return fewer bytes when the system fails, which a log line tells
SKYLUME_EXPORT std::string GetRandomBytes(int count);
