// The decrypters: any text as cipher text, any bytes as key. The first byte chooses.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "zbasic/zcrypt.h"

namespace {

void decryptText(long type, std::string text) {
    char* out = nullptr;
    const long length = ZelEncryption::Instance().Decrypt(type, text.data(), out);
    if (out ? length < 0 || std::strlen(out) > std::strlen(text.c_str()) : length >= 0)
        std::abort();
    ZelCryptoUtils::Free(out);
}

void decryptPassword(const std::string& text) {
    const std::size_t keySize = text.empty() ? 0 : static_cast<std::uint8_t>(text[0]) % 34;
    const SV::String key(text.data(), std::min(text.size(), keySize));
    const SV::String cipher(std::string_view(text).substr(key.size()));
    if (Zel_DecryptPasswordForAPP(cipher, key).size() > cipher.size()) std::abort();
}

// With the same key and IV the cipher text comes back, as far as it is whole blocks.
void decryptBytes(const std::string& text) {
    constexpr std::size_t kKey = 32;
    if (text.size() < kKey + 16) return;
    const auto* const key = reinterpret_cast<const unsigned char*>(text.data());
    const unsigned char* const iv = key + kKey;
    const std::string in = text.substr(kKey + 16);
    const int size = static_cast<int>(in.size());
    const int bits = 128 + 64 * (text[0] & 3);  // one of the four is none
    const auto [plain, length] = ZelCryptoUtils::AESDecrypt(
        reinterpret_cast<const unsigned char*>(in.data()), size, key, bits, iv);
    if ((plain != nullptr) != (bits <= 256)) std::abort();
    if (!plain) return;
    const auto [cipher, again] = ZelCryptoUtils::AESEncrypt(plain, length, key, bits, iv);
    if (!cipher || again != length || length != (size + 15) / 16 * 16) std::abort();
    if (std::memcmp(cipher, in.data(), in.size() / 16 * 16) != 0) std::abort();
    ZelCryptoUtils::Free(plain);
    ZelCryptoUtils::Free(cipher);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::string text(reinterpret_cast<const char*>(data + 1), size - 1);
    switch (data[0] % 4) {
        case 0:
            decryptText(0, text);
            break;
        case 1:
            decryptText(2, text);
            break;
        case 2:
            decryptPassword(text);
            break;
        default:
            decryptBytes(text);
    }
    return 0;
}
