#pragma once

#include <cstddef>
#include <string>

namespace ByteStrings {

/// What des3() does, in place.
/// @param length a multiple of eight
/// @return false when memory is short; the bytes are as they were then
bool des3InPlace(char* bytes, std::size_t length, const std::string& key, const std::string& iv,
                 bool encrypt);

} // namespace ByteStrings
