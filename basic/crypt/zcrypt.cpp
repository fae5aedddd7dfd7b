#include "zbasic/zcrypt.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "crypt/aescipher.h"
#include "crypt/base64lines.h"
#include "crypt/builtinkey.h"
#include "crypt/hexcodec.h"
#include "crypt/resultbuffer.h"
#include "crypt/wipe.h"

namespace {

using Bytes = Result<unsigned char>;

constexpr int kBuiltInKeyBits = 8 * kBuiltInKeySize;

std::size_t wholeBlocks(std::size_t size) { return (size + kAesBlock - 1) / kAesBlock * kAesBlock; }

Bytes cbc(Direction direction, const unsigned char* in, int inLength, const unsigned char* key,
          int keyBits, const unsigned char* iv) {
    if (!in || !key || !iv || inLength < 0 || keyBits < 0 || keyBits % 8 != 0 ||
        !isAesKeySize(static_cast<std::size_t>(keyBits) / 8)) {
        return failure<unsigned char>(kInvalidArgument);
    }
    const auto size = static_cast<std::size_t>(inLength);
    const AesKey aesKey{key, static_cast<std::size_t>(keyBits) / 8, iv};
    auto out = allocateResult<unsigned char>(wholeBlocks(size));
    if (!out ||
        (size != 0 && !aesTransform(AesMode::kCbc, direction, aesKey, in, size, out.get()))) {
        return failure<unsigned char>(kFailed);
    }
    out[wholeBlocks(size)] = 0;
    return success(out, wholeBlocks(size));
}

Bytes singleBlock(Direction direction, const unsigned char* in, int inLength,
                  const unsigned char* key, int keyBytes) {
    if (!in || !key || inLength < 0 || keyBytes < 0 ||
        !isAesKeySize(static_cast<std::size_t>(keyBytes))) {
        return failure<unsigned char>(kInvalidArgument);
    }
    const auto size = static_cast<std::size_t>(inLength);
    auto out = allocateResult<unsigned char>(wholeBlocks(size));
    if (!out) return failure<unsigned char>(kFailed);
    // Relied on by callers: whatever follows the first block is NUL bytes in the result.
    std::memset(out.get(), 0, wholeBlocks(size) + 1);
    if (size == 0) return success(out, 0);
    Wiped<unsigned char[kAesBlock]> block;
    std::memcpy(block.value, in, std::min(size, kAesBlock));
    const AesKey aesKey{key, static_cast<std::size_t>(keyBytes), nullptr};
    if (!aesTransform(AesMode::kBlocks, direction, aesKey, block.value, kAesBlock, out.get())) {
        return failure<unsigned char>(kFailed);
    }
    return success(out, wholeBlocks(size));
}

}  // namespace

void ZelCryptoUtils::Free(void* buffer) { std::free(buffer); }

std::pair<char*, int> ZelCryptoUtils::HexEncode(const unsigned char* data, int length) {
    if (!data || length < 0) return failure<char>(kInvalidArgument);
    const auto size = static_cast<std::size_t>(length);
    auto text = allocateResult<char>(2 * size);
    if (!text) return failure<char>(kFailed);
    hexEncode(data, size, text.get());
    text[2 * size] = '\0';
    return success(text, 2 * size);
}

std::pair<unsigned char*, int> ZelCryptoUtils::HexDecode(const char* text) {
    if (!text) return failure<unsigned char>(kInvalidArgument);
    const std::size_t length = std::strlen(text);
    if (length % 2 != 0) return failure<unsigned char>(kInvalidArgument);
    auto data = allocateResult<unsigned char>(length / 2);
    if (!data) return failure<unsigned char>(kFailed);
    if (!hexDecode(text, length / 2, data.get())) {
        wipe(data.get(), length / 2);  // what stands before the fault
        return failure<unsigned char>(kFailed);
    }
    data[length / 2] = 0;
    return success(data, length / 2);
}

std::pair<char*, int> ZelCryptoUtils::Base64Encode(const unsigned char* data, int length) {
    if (!data || length < 0) return failure<char>(kInvalidArgument);
    const auto size = static_cast<std::size_t>(length);
    const std::size_t textSize = base64LinesSize(size);
    auto text = allocateResult<char>(textSize);
    if (!text) return failure<char>(kFailed);
    base64LinesEncode(data, size, text.get());
    text[textSize] = '\0';
    return success(text, textSize);
}

std::pair<unsigned char*, int> ZelCryptoUtils::Base64Decode(const char* text) {
    if (!text) return failure<unsigned char>(kInvalidArgument);
    const std::size_t length = std::strlen(text);
    auto data = allocateResult<unsigned char>(length);
    if (!data) return failure<unsigned char>(kFailed);
    const auto size = base64LinesDecode({text, length}, data.get());
    return size ? success(data, *size) : failure<unsigned char>(kFailed);
}

std::pair<unsigned char*, int> ZelCryptoUtils::AESEncrypt(const unsigned char* in, int inLength,
                                                          const unsigned char* key, int keyBits,
                                                          const unsigned char* iv) {
    return cbc(Direction::kEncrypt, in, inLength, key, keyBits, iv);
}

std::pair<unsigned char*, int> ZelCryptoUtils::AESDecrypt(const unsigned char* in, int inLength,
                                                          const unsigned char* key, int keyBits,
                                                          const unsigned char* iv) {
    return cbc(Direction::kDecrypt, in, inLength, key, keyBits, iv);
}

std::pair<unsigned char*, int> ZelCryptoUtils::AESEncrypt(const unsigned char* in, int inLength,
                                                          const unsigned char* key, int keyBytes) {
    return singleBlock(Direction::kEncrypt, in, inLength, key, keyBytes);
}

std::pair<unsigned char*, int> ZelCryptoUtils::AESDecrypt(const unsigned char* in, int inLength,
                                                          const unsigned char* key, int keyBytes) {
    return singleBlock(Direction::kDecrypt, in, inLength, key, keyBytes);
}

std::pair<char*, int> ZelCryptoUtils::AESEncrypt(const char* text) {
    if (!text) return failure<char>(kInvalidArgument);
    const std::size_t length = std::strlen(text);
    if (length > kMaxResult) return failure<char>(kFailed);
    const BuiltInKey key;
    const auto [cipher, size] =
        AESEncrypt(reinterpret_cast<const unsigned char*>(text), static_cast<int>(length), key.key,
                   kBuiltInKeyBits, key.iv);
    if (!cipher) return failure<char>(size);
    const ResultBuffer<unsigned char> owner(cipher);
    return HexEncode(cipher, size);
}

std::pair<char*, int> ZelCryptoUtils::AESDecrypt(const char* hexText) {
    const auto [cipher, size] = HexDecode(hexText);
    if (!cipher) return failure<char>(size);
    const ResultBuffer<unsigned char> owner(cipher);
    const BuiltInKey key;
    const auto [text, length] = AESDecrypt(cipher, size, key.key, kBuiltInKeyBits, key.iv);
    return {reinterpret_cast<char*>(text), length};
}
