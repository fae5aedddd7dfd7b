// Base64 in lines: every text is read as libcrypto's filter reads it.

#include <openssl/bio.h>
#include <openssl/evp.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "zbasic/zcrypt.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const std::size_t length = std::strlen(text.c_str());
    const auto [bytes, count] = ZelCryptoUtils::Base64Decode(text.c_str());
    std::string expected(length, '\0');
    BIO* const chain =
        BIO_push(BIO_new(BIO_f_base64()), BIO_new_mem_buf(text.data(), static_cast<int>(length)));
    const int read = BIO_read(chain, expected.data(), static_cast<int>(length));
    BIO_free_all(chain);
    if (count != (read < 0 ? -1 : read)) std::abort();
    if (read > 0 && std::memcmp(bytes, expected.data(), static_cast<std::size_t>(read)) != 0) {
        std::abort();
    }
    ZelCryptoUtils::Free(bytes);
    return 0;
}
