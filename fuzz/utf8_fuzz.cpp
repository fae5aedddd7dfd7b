// UTF-8: everything that checks or decodes it agrees about any bytes. The first byte says where
// what comes in two pieces is cut.

#include "input.h"
#include "model/encoding.h"
#include "sys/utf8prefix.h"
#include "zelml/utf8.h"

namespace {

// How much of the text is whole characters, one decoded after the other.
std::size_t decodedSize(std::string_view text) {
    std::size_t size = 0;
    while (size < text.size()) {
        const Decoded decoded = decodeUtf8(text.substr(size));
        if (decoded.size == 0) break;
        const auto again = zelhost::decodeUtf8(text.substr(size));
        check(again.character == decoded.character && again.size == decoded.size);
        std::string written;
        zelhost::appendUtf8(written, decoded.character);
        check(written == text.substr(size, decoded.size));
        written.clear();
        if (decoded.size < 4) appendUtf8(written, decoded.character);
        check(written.empty() || written == text.substr(size, decoded.size));
        size += decoded.size;
    }
    return size;
}

bool isUtf8(std::string_view text) { return utf8Prefix(text).size == text.size(); }

// Valid text stays valid whatever its entities are.
void checkEntities(std::string_view text) {
    std::string decoded;
    zelhost::decodeEntities(text, zelhost::Encoding::codePage1252, decoded);
    check(isUtf8(decoded));
    if (!isUtf8(text)) return;
    zelhost::decodeEntities(text, zelhost::Encoding::utf8, decoded);
    check(isUtf8(decoded));
    if (text.find('&') == text.npos) check(decoded == text);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Bytes input(data, size);
    const std::size_t cut = input.next();
    const std::string text(input.rest());

    const Utf8Prefix prefix = utf8Prefix(text);
    check(prefix.size == decodedSize(text));
    check(prefix.isAscii == std::all_of(text.begin(), text.begin() + static_cast<long>(prefix.size),
                                        [](char c) { return static_cast<signed char>(c) >= 0; }));
    zelhost::Utf8Validator validator;
    const std::string_view whole = text;
    validator.accept(whole.substr(0, cut));
    const bool isAccepted = validator.accept(whole.substr(std::min(cut, whole.size())));
    check(isAccepted == (prefix.size == text.size() || prefix.isCharacterBegun));
    if (isAccepted) check(validator.isInCharacter() == prefix.isCharacterBegun);
    checkEntities(text);
    return 0;
}
