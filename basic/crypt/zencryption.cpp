// The choice of scheme, the scheme of old files, and the passwords of applications.

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "crypt/aescipher.h"
#include "crypt/builtinkey.h"
#include "crypt/descipher.h"
#include "crypt/resultbuffer.h"
#include "crypt/wipe.h"
#include "zbasic/zbase64.h"
#include "zbasic/zcrypt.h"
#include "zbasic/zdes.h"

namespace {

constexpr long kFirstAesType = 2;
constexpr std::size_t kHexBlock = 2 * kDesBlock;

// The schedule of the built-in key.
struct BuiltInSchedule {
    des_ctx schedule;

    BuiltInSchedule() { ades_key(&schedule, kDesKey); }
    BuiltInSchedule(const BuiltInSchedule&) = delete;
    BuiltInSchedule& operator=(const BuiltInSchedule&) = delete;
    ~BuiltInSchedule() { wipe(&schedule, sizeof schedule); }
};

std::size_t blocksOf(std::size_t size) { return (size + kDesBlock - 1) / kDesBlock; }

// Writes the block's lower-case digits.
void writeHex(const unsigned char* block, char* text) {
    for (std::size_t i = 0; i < kDesBlock; ++i) {
        text[2 * i] = "0123456789abcdef"[block[i] >> 4];
        text[2 * i + 1] = "0123456789abcdef"[block[i] & 15];
    }
}

// The next block of a text; behind its end come characters of the text itself.
void fillBlock(const char* text, std::size_t size, std::size_t from, unsigned char* block) {
    const std::size_t held = std::min(kDesBlock, size - from);
    std::memcpy(block, text + from, held);
    for (std::size_t k = 0; held + k < kDesBlock; ++k) {
        block[held + k] = static_cast<unsigned char>(text[17 * k % size]);
    }
}

// As `sscanf` reads "%2x", with 0 where that reads nothing: blanks and a sign are allowed.
// Relied on by callers: a pair that is not two digits is no error.
unsigned char scannedPair(const char* text) {
    const char pair[] = {text[0], text[1], '\0'};
    return static_cast<unsigned char>(std::strtoul(pair, nullptr, 16));
}

}  // namespace

void Zel_Encrypt(const char* in, char* out) {
    const std::size_t size = in ? std::strlen(in) : 0;
    BuiltInSchedule key;
    Wiped<std::array<unsigned char, kDesBlock>> block;
    for (std::size_t from = 0; from < size; from += kDesBlock) {
        fillBlock(in, size, from, block.value.data());
        ades_enc(&key.schedule, block.value.data(), 1);
        writeHex(block.value.data(), out);
        out += kHexBlock;
    }
    *out = '\0';
}

void Zel_Decrypt(char* hexIn, unsigned char*& out) {
    const std::size_t size = hexIn ? std::strlen(hexIn) / 2 : 0;
    out = static_cast<unsigned char*>(std::malloc(size + 1));
    if (!out) return;
    for (std::size_t i = 0; i < size; ++i) out[i] = scannedPair(hexIn + 2 * i);
    const BuiltInSchedule key;
    desTransform(key.schedule.words + kDesWords, out, size / kDesBlock);
    out[size] = 0;
}

SV::String Zel_DecryptPasswordForAPP(const SV::String& base64CipherText, const SV::String& key) {
    if (!isAesKeySize(key.size()) || base64CipherText.size() > kMaxResult) return {};
    char* decoded = nullptr;
    unsigned long decodedSize = 0;
    const bool isDecoded = Zel_NewBase64Decode(base64CipherText.data(),
                                               static_cast<unsigned long>(base64CipherText.size()),
                                               decoded, decodedSize);
    const std::unique_ptr<char[]> cipher(decoded);
    if (!isDecoded) return {};
    const auto [text, size] = ZelCryptoUtils::AESDecrypt(
        reinterpret_cast<const unsigned char*>(decoded), static_cast<int>(decodedSize),
        reinterpret_cast<const unsigned char*>(key.data()), static_cast<int>(key.size()));
    if (!text) return {};
    const ResultBuffer<unsigned char> owner(text);
    const WipeAtEnd wipeAtEnd{text, static_cast<std::size_t>(size)};
    // Relied on by callers: of the padding only the last byte counts, and it may be 0.
    const std::size_t padding = size > 0 ? text[size - 1] : 0;
    if (padding > decodedSize) return {};
    return {reinterpret_cast<const char*>(text), decodedSize - padding};
}

ZelEncryption::ZelEncryption() = default;
ZelEncryption::~ZelEncryption() = default;

ZelEncryption& ZelEncryption::Instance() {
    struct Single : ZelEncryption {};
    static Single single;
    return single;
}

void ZelEncryption::SetEncryptionType(long type) { m_nType = static_cast<std::int32_t>(type); }

long ZelEncryption::Encrypt(char* in, char*& out, long maxLength) {
    return Encrypt(m_nType, in, out, maxLength);
}

long ZelEncryption::Encrypt(long type, char* in, char*& out, long maxLength) {
    if (type >= kFirstAesType) {
        const auto [text, size] = ZelCryptoUtils::AESEncrypt(in);
        out = text;
        return size;  // Relied on by callers: `maxLength` does not cut it.
    }
    const std::size_t size = blocksOf(in ? std::strlen(in) : 0) * kHexBlock;
    auto text = allocateResult<char>(size);
    out = text.get();
    if (!text) return kFailed;
    Zel_Encrypt(in, text.get());
    const auto length = static_cast<long>(size);
    const long kept = maxLength > -1 ? std::min(maxLength, length) : length;
    text.release()[kept] = '\0';
    return kept;
}

long ZelEncryption::Decrypt(char* in, char*& out) { return Decrypt(m_nType, in, out); }

long ZelEncryption::Decrypt(long type, char* in, char*& out) {
    if (type >= kFirstAesType) {
        const auto [text, size] = ZelCryptoUtils::AESDecrypt(in);
        out = text;
        return size;
    }
    unsigned char* text = nullptr;
    Zel_Decrypt(in, text);
    out = reinterpret_cast<char*>(text);
    return text ? static_cast<long>(std::strlen(out)) : kFailed;
}
