// Letters of the process code page, and its conversion to and from UTF-8.

#include <climits>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>

#include "sv/string.h"

#include <windows.h>

namespace SV {

namespace {

// The system counts in 32 bits; longer texts cannot be handed to it.
int systemLength(std::size_t size) {
    if (size > INT_MAX) throw std::length_error("SV::String: code page conversion");
    return static_cast<int>(size);
}

String convert(const String& text, UINT from, UINT to) {
    if (text.empty()) return text;
    const int size = systemLength(text.size());
    std::wstring wide(text.size(), L'\0');  // never more units than bytes
    const int wideSize = ::MultiByteToWideChar(from, 0, text.data(), size, wide.data(), size);
    // Without best fit: a character that is not there must not come out as another one.
    const bool isUtf8 = to == CP_UTF8 || ::GetACP() == CP_UTF8;  // which takes no such flag
    const DWORD flags = isUtf8 ? 0 : WC_NO_BEST_FIT_CHARS;
    const int outSize =
        ::WideCharToMultiByte(to, flags, wide.data(), wideSize, nullptr, 0, nullptr, nullptr);
    std::string out(static_cast<std::size_t>(outSize), '\0');
    ::WideCharToMultiByte(to, flags, wide.data(), wideSize, out.data(), outSize, nullptr, nullptr);
    return String(out);
}

bool isAscii(std::string_view text) {
    constexpr std::uint64_t kHighBits = 0x8080808080808080;
    std::uint64_t seen = 0;
    while (text.size() >= sizeof seen) {
        std::uint64_t word;
        std::memcpy(&word, text.data(), sizeof word);
        if (word & kHighBits) return false;
        text.remove_prefix(sizeof word);
    }
    std::memcpy(&seen, text.data(), text.size());
    return (seen & kHighBits) == 0;
}

}  // namespace

String String::Upper() const {
    std::string copy(begin(), end());
    ::CharUpperBuffA(copy.data(), static_cast<DWORD>(systemLength(copy.size())));
    return String(copy);
}

String String::Lower() const {
    std::string copy(begin(), end());
    ::CharLowerBuffA(copy.data(), static_cast<DWORD>(systemLength(copy.size())));
    return String(copy);
}

String ConvertStringToUTF8String(const String& text) {
    return isAscii(text) ? text : convert(text, CP_ACP, CP_UTF8);
}

String ConvertUTF8StringToString(const String& utf8) {
    return isAscii(utf8) ? utf8 : convert(utf8, CP_UTF8, CP_ACP);
}

}  // namespace SV
