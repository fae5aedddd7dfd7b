// Hexadecimal digits: what decodes is digits alone, and encodes to the same.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "zbasic/zcrypt.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string text(reinterpret_cast<const char*>(data), size);
    text.resize(text.find('\0') == text.npos ? size : text.find('\0'));
    const auto [bytes, length] = ZelCryptoUtils::HexDecode(text.c_str());
    const bool isDigits = text.find_first_not_of("0123456789abcdefABCDEF") == text.npos;
    if ((bytes != nullptr) != (isDigits && text.size() % 2 == 0)) std::abort();
    if (!bytes) return 0;
    const auto [again, count] = ZelCryptoUtils::HexEncode(bytes, length);
    for (char& c : text) c = c >= 'a' ? static_cast<char>(c - 'a' + 'A') : c;
    if (!again || text != std::string(again, static_cast<std::size_t>(count))) std::abort();
    ZelCryptoUtils::Free(bytes);
    ZelCryptoUtils::Free(again);
    return 0;
}
