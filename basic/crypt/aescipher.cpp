#include "crypt/aescipher.h"

#include <openssl/core_dispatch.h>
#include <openssl/crypto.h>
#include <openssl/provider.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <new>
#include <string_view>

#include "crypt/wipe.h"

namespace {

// The functions of libcrypto's default provider for one cipher (see provider-cipher(7)). EVP calls
// the same ones, but the bookkeeping around them costs three times what a short text takes. They
// know no padding: whole blocks go in and come out.
struct Cipher {
    OSSL_FUNC_cipher_newctx_fn* newContext = nullptr;
    OSSL_FUNC_cipher_freectx_fn* freeContext = nullptr;
    OSSL_FUNC_cipher_encrypt_init_fn* initEncryption = nullptr;
    OSSL_FUNC_cipher_decrypt_init_fn* initDecryption = nullptr;
    OSSL_FUNC_cipher_cipher_fn* transform = nullptr;
};

Cipher readFunctions(const OSSL_DISPATCH* function) {
    Cipher cipher;
    for (; function->function_id != 0; ++function) {
        switch (function->function_id) {
            case OSSL_FUNC_CIPHER_NEWCTX:
                cipher.newContext = OSSL_FUNC_cipher_newctx(function);
                break;
            case OSSL_FUNC_CIPHER_FREECTX:
                cipher.freeContext = OSSL_FUNC_cipher_freectx(function);
                break;
            case OSSL_FUNC_CIPHER_ENCRYPT_INIT:
                cipher.initEncryption = OSSL_FUNC_cipher_encrypt_init(function);
                break;
            case OSSL_FUNC_CIPHER_DECRYPT_INIT:
                cipher.initDecryption = OSSL_FUNC_cipher_decrypt_init(function);
                break;
            case OSSL_FUNC_CIPHER_CIPHER:
                cipher.transform = OSSL_FUNC_cipher_cipher(function);
                break;
            default:
                break;
        }
    }
    return cipher;
}

constexpr std::array<std::string_view, 6> kNames = {
    "AES-128-CBC:", "AES-192-CBC:", "AES-256-CBC:", "AES-128-ECB:", "AES-192-ECB:", "AES-256-ECB:"};

struct FreeLibrary {
    void operator()(OSSL_LIB_CTX* library) const { OSSL_LIB_CTX_free(library); }
};
using Library = std::unique_ptr<OSSL_LIB_CTX, FreeLibrary>;

// Found once. A library context of our own reads no configuration file, and the host's is not
// touched. It is never released: statics of the host may still decipher at exit.
struct Provider {
    void* context = nullptr;
    std::array<Cipher, kNames.size()> ciphers;

    // Throws `std::bad_alloc`, so that it is tried again.
    Provider() {
        Library library(OSSL_LIB_CTX_new());
        if (!library) throw std::bad_alloc();  // null is the host's context
        OSSL_PROVIDER* const provider = OSSL_PROVIDER_load(library.get(), "default");
        if (!provider) throw std::bad_alloc();
        static_cast<void>(library.release());  // it stays for good
        context = OSSL_PROVIDER_get0_provider_ctx(provider);
        int isVolatile = 0;
        const OSSL_ALGORITHM* found =
            OSSL_PROVIDER_query_operation(provider, OSSL_OP_CIPHER, &isVolatile);
        for (; found && found->algorithm_names; ++found) read(*found);
    }

    void read(const OSSL_ALGORITHM& algorithm) {
        for (std::size_t i = 0; i < kNames.size(); ++i) {
            if (std::string_view(algorithm.algorithm_names).starts_with(kNames[i])) {
                ciphers[i] = readFunctions(algorithm.implementation);
            }
        }
    }

    static const Provider& instance() {
        static const Provider provider;
        return provider;
    }
};

const Cipher& cipherOf(AesMode mode, std::size_t keySize) {
    const std::size_t sizeIndex = keySize / 8 - 2;
    return Provider::instance().ciphers[(mode == AesMode::kCbc ? 0 : 3) + sizeIndex];
}

// The keyed state of one message. libcrypto wipes it when it is released.
class Message {
public:
    Message(AesMode mode, Direction direction, const AesKey& key)
        : m_cipher(cipherOf(mode, key.size)),
          m_context(m_cipher.newContext ? m_cipher.newContext(Provider::instance().context)
                                        : nullptr) {
        const auto init =
            direction == Direction::kEncrypt ? m_cipher.initEncryption : m_cipher.initDecryption;
        const std::size_t ivSize = key.iv ? kAesBlock : 0;
        m_isReady = m_context && init(m_context, key.bytes, key.size, key.iv, ivSize, nullptr) == 1;
    }
    Message(const Message&) = delete;
    Message& operator=(const Message&) = delete;
    ~Message() {
        if (m_context) m_cipher.freeContext(m_context);
    }

    explicit operator bool() const { return m_isReady; }

    // Whole blocks, going on from the last call.
    bool transform(const unsigned char* in, std::size_t size, unsigned char* out) {
        std::size_t written = 0;
        return size == 0 || m_cipher.transform(m_context, out, &written, size, in, size) == 1;
    }

private:
    const Cipher& m_cipher;
    void* m_context;
    bool m_isReady = false;
};

bool transformLastPart(Message& message, Direction direction, const unsigned char* in,
                       std::size_t size, unsigned char* out) {
    Wiped<std::array<unsigned char, kAesBlock>> block;
    std::copy_n(in, size, block.value.data());
    if (!message.transform(block.value.data(), kAesBlock, block.value.data())) return false;
    // Relied on by callers: of a deciphered part only as many bytes come out as went in.
    const std::size_t kept = direction == Direction::kEncrypt ? kAesBlock : size;
    std::copy_n(block.value.data(), kept, out);
    std::fill_n(out + kept, kAesBlock - kept, static_cast<unsigned char>(0));
    return true;
}

}  // namespace

bool isAesKeySize(std::size_t size) { return size == 16 || size == 24 || size == 32; }

bool aesTransform(AesMode mode, Direction direction, const AesKey& key, const unsigned char* in,
                  std::size_t size, unsigned char* out) try {
    Message message(mode, direction, key);
    const std::size_t part = size % kAesBlock;
    const std::size_t whole = size - part;
    return message && message.transform(in, whole, out) &&
           (part == 0 || transformLastPart(message, direction, in + whole, part, out + whole));
} catch (const std::bad_alloc&) {
    return false;
}
