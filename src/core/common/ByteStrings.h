#pragma once

#include "skylume_export.h"

#include <string>

/// Operations on byte strings: raw bytes; embedded zeros are allowed. They may be called from any thread and do not
/// throw: when memory is short the result is empty, which is logged.

/// Encrypts or decrypts with Triple DES in cipher-block-chaining mode. For its limits see docs/ciphers.md.
/// @param data padded with zero bytes to a multiple of eight; decryption does not remove the padding
/// @param key  cut or padded with zero bytes to 24
/// @param iv   the first chaining block; cut or padded with zero bytes to 8
/// @return as many bytes as data has with its padding
SKYLUME_EXPORT std::string des3(std::string const& data, std::string const& key, std::string const& iv,
                                bool encrypt);

/// Two hexadecimal digits for each byte, in upper case.
SKYLUME_EXPORT std::string StrToHex(std::string const& bytes);

/// Converts hexadecimal digits of either case to (length + 1) / 2 bytes. A character that is not a digit keeps its
/// place and stands for 0, as does the missing one of an odd length.
SKYLUME_EXPORT std::string HexToStr(std::string const& digits);

/// Removes characters from both ends. Zero bytes at the end are always removed.
/// @param left, right the characters to remove; null means space, tab, carriage return and line feed
SKYLUME_EXPORT std::string TrimStr(std::string const& s, const char* left = nullptr,
                                   const char* right = nullptr);

/// Cryptographically secure random bytes, one system call each.
/// @param count clamped to 0 to 128
/// @return fewer bytes when the system fails, which is logged
SKYLUME_EXPORT std::string GetRandomBytes(int count);
