// Decodes Base64, hexadecimal digits and protected strings: the fastest implementation must give the same result as
// the portable one and stay within its buffers, which the sanitizers check.
#include "common/ByteStrings.h"
#include "common/CommonUtils.h"
#include "common/ciphers/Base64.h"
#include "common/ciphers/ProcessorPaths_p.h"

#include <QLoggingCategory>

#include <cstring>
#include <string>
#include <vector>

namespace {

using Bytes = std::vector<std::uint8_t>;

void require(bool holds)
{
    if (!holds)
        __builtin_trap();
}

void decodeBase64(const std::string& text)
{
    Bytes out(text.size() + 1); // more than enough; the exact size is checked below
    unsigned size = 1;
    const auto* const in = reinterpret_cast<const std::uint8_t*>(text.c_str());
    if (cl_base64Decode(in, 1, out.data(), &size) != 0) {
        require(size == 0);
        return;
    }
    Bytes exact(size), portable(size);
    require(cl_base64Decode(in, 1, exact.data(), &size) == 0);
    Base64Groups::decode(nullptr, in, portable.data(), size);
    require(portable == exact && std::memcmp(exact.data(), out.data(), size) == 0);
}

void decodeHex(const std::string& digits)
{
    const std::string bytes = HexToStr(digits);
    std::string portable((digits.size() + 1) / 2, '\0');
    Hex::decode(nullptr, digits.data(), digits.size(), reinterpret_cast<std::uint8_t*>(&portable[0]));
    require(bytes == portable);
    require(HexToStr(StrToHex(bytes)) == bytes);
}

void decrypt(const std::string& text)
{
    char* result = nullptr;
    CommonUtils::Decrypt(text.c_str(), "pass phrase", result);
    require((result != nullptr) == (std::strlen(text.c_str()) >= 15));
    require(!result || std::strlen(result) <= text.size() / 2);
    CommonUtils::CryptLocalFree(result);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const bool isQuiet =
        (QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false")), true);
    Q_UNUSED(isQuiet)
    const std::string text(reinterpret_cast<const char*>(data), size);
    decodeBase64(text);
    decodeHex(text);
    decrypt(text);
    return 0;
}
