#include "sys/utf8prefix.h"

#include "text/bytescan.h"

namespace {

struct NonAscii {
    __m128i operator()(__m128i bytes) const { return bytes; }  // the high bits
    bool operator()(char byte) const { return static_cast<unsigned char>(byte) >= 0x80; }
};

// What may follow a first byte.
struct Follower {
    std::size_t count;       // of bytes; 0 for what is no first byte
    unsigned char smallest;  // of the one right behind it; others go from 0x80 to 0xBF
    unsigned char largest;
};

Follower followerOf(unsigned char first) {
    if (first < 0xC2 || first > 0xF4) return {0, 0, 0};
    if (first < 0xE0) return {1, 0x80, 0xBF};
    if (first < 0xF0) {
        return {2, static_cast<unsigned char>(first == 0xE0 ? 0xA0 : 0x80),
                static_cast<unsigned char>(first == 0xED ? 0x9F : 0xBF)};
    }
    return {3, static_cast<unsigned char>(first == 0xF0 ? 0x90 : 0x80),
            static_cast<unsigned char>(first == 0xF4 ? 0x8F : 0xBF)};
}

// Of the character at the start, as far as it is there: its bytes, 0 when it is none.
std::size_t characterSize(std::string_view text, std::size_t& wanted) {
    const Follower follower = followerOf(static_cast<unsigned char>(text[0]));
    wanted = follower.count + 1;
    if (follower.count == 0) return 0;
    std::size_t size = 1;
    for (; size < wanted && size < text.size(); ++size) {
        const auto byte = static_cast<unsigned char>(text[size]);
        const bool isSecond = size == 1;
        if (byte < (isSecond ? follower.smallest : 0x80)) return 0;
        if (byte > (isSecond ? follower.largest : 0xBF)) return 0;
    }
    return size;
}

}  // namespace

Utf8Prefix utf8Prefix(std::string_view text) {
    const char* at = text.data();
    const char* const end = at + text.size();
    bool isAscii = true;
    const auto prefix = [&](bool isCharacterBegun) {
        return Utf8Prefix{static_cast<std::size_t>(at - text.data()), isAscii, isCharacterBegun};
    };
    for (;;) {
        at = findByte(at, end, NonAscii());
        if (at == end) return prefix(false);
        do {
            std::size_t wanted = 0;
            const std::size_t size =
                characterSize({at, static_cast<std::size_t>(end - at)}, wanted);
            if (size == 0) return prefix(false);
            if (size < wanted) return prefix(true);
            at += size;
            isAscii = false;
        } while (at != end && NonAscii()(*at));
    }
}
