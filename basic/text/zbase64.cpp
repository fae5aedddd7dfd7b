#include "zbasic/zbase64.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "text/base64core.h"

namespace {

constexpr std::uint64_t kMaxLength = 0xFFFFFFFF;  // of the interface, whatever `long` is

// Makes the buffer before anything is looked at: callers release it in every case.
char* hand(std::uint64_t length, char*& out, unsigned long& outLen) {
    out = new char[length + 1];
    outLen = static_cast<unsigned long>(length);
    return out;
}

bool refuse(char*& out, unsigned long& outLen) {
    *hand(0, out, outLen) = '\0';
    return false;
}

bool decodeTo(std::string_view text, char* buffer) {
    char* const end = base64::decode(text.data(), text.size(), buffer);
    if (end) *end = '\0';
    return end != nullptr;
}

}  // namespace

bool Zel_OldBase64Encode(char* in, unsigned long inLen, char*& out, unsigned long& outLen) {
    const std::uint64_t length = base64::encodedSize(inLen);
    if (length > kMaxLength) return refuse(out, outLen);
    *base64::encode(in, inLen, hand(length, out, outLen)) = '\0';
    return true;
}

bool Zel_NewBase64Encode(const char* in, unsigned long inLen, char*& out, unsigned long& outLen) {
    const std::uint64_t length = (std::uint64_t{inLen} + 2) / 3 * 4;
    if (length > kMaxLength) return refuse(out, outLen);
    char* const buffer = hand(length, out, outLen);
    if (length > 0) std::memcpy(buffer + length - 2, "==", 2);  // the last group overwrites them
    base64::encode(in, inLen, buffer);
    buffer[length] = '\0';
    return true;
}

bool Zel_OldBase64Decode(char* in, unsigned long inLen, char*& out, unsigned long& outLen) {
    return decodeTo({in, inLen}, hand(base64::decodedSize(inLen), out, outLen));
}

bool Zel_NewBase64Decode(const char* in, unsigned long inLen, char*& out, unsigned long& outLen) {
    std::string_view text(in, inLen);
    text = text.substr(0, text.find_last_not_of('=') + 1);
    const std::uint64_t padding = inLen - text.size();
    const std::uint64_t groups = std::uint64_t{inLen} / 4 * 3;
    char* const buffer = hand(groups - std::min(padding, groups), out, outLen);
    // Text in padded form never holds more than that; other text must not overrun the buffer.
    return padding <= groups && base64::decodedSize(text.size()) <= outLen &&
           decodeTo(text, buffer);
}
