#include "crypt/base64lines.h"

#include <openssl/bio.h>
#include <openssl/evp.h>

#include <algorithm>
#include <cstdint>
#include <memory>

#include "text/base64core.h"

namespace {

constexpr std::size_t kLineBytes = 48;
constexpr std::size_t kLineCharacters = 64;

struct FreeChain {
    void operator()(BIO* chain) const { BIO_free_all(chain); }
};
using Chain = std::unique_ptr<BIO, FreeChain>;

// Every text, at the filter's own pace.
std::optional<std::size_t> decodeByFilter(std::string_view text, unsigned char* data) {
    Chain filter(BIO_new(BIO_f_base64()));
    BIO* const source = BIO_new_mem_buf(text.data(), static_cast<int>(text.size()));
    if (!filter || !source) {
        BIO_free(source);
        return std::nullopt;
    }
    BIO_push(filter.get(), source);
    const int size = BIO_read(filter.get(), data, static_cast<int>(text.size()));
    if (size < 0) return std::nullopt;
    return static_cast<std::size_t>(size);
}

// Whether the text has the line feeds that `base64LinesEncode` would put there.
bool hasRegularLines(std::string_view text) {
    if (text.empty() || text.back() != '\n') return false;
    constexpr std::size_t kLine = kLineCharacters + 1;
    const std::size_t lastLine = (text.size() - 1) % kLine;
    if (lastLine == 0 || lastLine % 4 != 0) return false;
    for (std::size_t at = kLineCharacters; at < text.size(); at += kLine) {
        if (text[at] != '\n') return false;
    }
    return true;
}

// Null when a character is not of the alphabet; the text must have regular lines.
char* decodeLines(std::string_view text, char* data) {
    text.remove_suffix(1);
    const std::size_t characters = text.find_last_not_of('=') + 1;
    if (text.size() - characters > 2) return nullptr;
    text = text.substr(0, characters);
    while (data && text.size() > kLineCharacters) {
        data = base64::decode(text.data(), kLineCharacters, data);
        text.remove_prefix(kLineCharacters + 1);
    }
    return data ? base64::decode(text.data(), text.size(), data) : nullptr;
}

}  // namespace

std::size_t base64LinesSize(std::size_t size) {
    return (size + 2) / 3 * 4 + (size + kLineBytes - 1) / kLineBytes;
}

void base64LinesEncode(const unsigned char* data, std::size_t size, char* text) {
    auto from = reinterpret_cast<const char*>(data);
    for (; size >= kLineBytes; size -= kLineBytes, from += kLineBytes) {
        text = base64::encode(from, kLineBytes, text);
        *text++ = '\n';
    }
    if (size == 0) return;
    text = base64::encode(from, size, text);
    text = std::fill_n(text, (3 - size % 3) % 3, '=');
    *text = '\n';
}

std::optional<std::size_t> base64LinesDecode(std::string_view text, unsigned char* data) {
    if (hasRegularLines(text)) {
        char* const start = reinterpret_cast<char*>(data);
        if (char* const end = decodeLines(text, start)) {
            return static_cast<std::size_t>(end - start);
        }
    }
    return decodeByFilter(text, data);
}
