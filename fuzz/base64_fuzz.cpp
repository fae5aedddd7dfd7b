// Any bytes to both decoders and through both encoders; the two ways to do it agree.

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>

#include "text/base64core.h"
#include "zbasic/zbase64.h"

namespace {

struct Result {
    bool isDone;
    std::string bytes;
};

template <typename Pointer>
Result run(bool (*codec)(Pointer, unsigned long, char*&, unsigned long&), std::string in) {
    char* out = nullptr;
    unsigned long length = 0;
    const bool isDone = codec(in.data(), in.size(), out, length);
    const std::unique_ptr<char[]> owner(out);
    if (isDone && out[length] != '\0') std::abort();
    return {isDone, isDone ? std::string(out, length) : std::string()};
}

void checkRoundTrip(const std::string& bytes) {
    const Result newText = run(Zel_NewBase64Encode, bytes);
    const Result oldText = run(Zel_OldBase64Encode, bytes);
    if (!newText.isDone || !oldText.isDone || !newText.bytes.starts_with(oldText.bytes))
        std::abort();
    if (run(Zel_NewBase64Decode, newText.bytes).bytes != bytes) std::abort();
    if (run(Zel_OldBase64Decode, oldText.bytes).bytes != bytes) std::abort();
}

void checkDecoders(const std::string& text) {
    std::string bytes(base64::decodedSize(text.size()), '\0');
    std::string plain = bytes;
    const bool isDone = base64::decode(text.data(), text.size(), bytes.data()) != nullptr;
    if (isDone != (base64::decodePlain(text.data(), text.size(), plain.data()) != nullptr) ||
        bytes != plain) {
        std::abort();
    }
    const Result old = run(Zel_OldBase64Decode, text);
    if (old.isDone != isDone || (isDone && old.bytes != bytes)) std::abort();
    const Result padded = run(Zel_NewBase64Decode, text);
    if (padded.isDone && padded.bytes.size() > bytes.size()) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string input(reinterpret_cast<const char*>(data), size);
    checkRoundTrip(input);
    checkDecoders(input);
    return 0;
}
