#include "text/base64core.h"

#include <array>
#include <cstring>

#include "text/base64shuffle.h"

namespace base64 {

namespace {

constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

// Two characters for twelve bits: half as many look-ups as one by one.
struct Pair {
    char characters[2];
};
constexpr std::array<Pair, 4096> kPairs = [] {
    std::array<Pair, 4096> pairs{};
    for (std::size_t i = 0; i < pairs.size(); ++i)
        pairs[i] = {kAlphabet[i >> 6], kAlphabet[i & 63]};
    return pairs;
}();

// What each character adds to its group's three bytes at each of its four places, as they lie in
// memory; a bit in the fourth byte: no character of the alphabet.
constexpr std::uint32_t kInvalid = 0xFF000000;
using Values = std::array<std::uint32_t, 256>;
constexpr std::array<Values, 4> kValues = [] {
    std::array<Values, 4> values{};
    for (Values& place : values) place.fill(kInvalid);
    for (std::uint32_t value = 0; value < 64; ++value) {
        const auto character = static_cast<unsigned char>(kAlphabet[value]);
        for (std::size_t place = 0; place < 4; ++place) {
            const std::uint32_t group = value << (18 - 6 * place);
            values[place][character] = group >> 16 | (group & 0xFF00) | (group & 0xFF) << 16;
        }
    }
    return values;
}();

std::uint32_t valueOf(const char* text, std::size_t place) {
    return kValues[place][static_cast<unsigned char>(text[place])];
}

// The bytes of four characters.
std::uint32_t groupAt(const char* text) {
    return valueOf(text, 0) | valueOf(text, 1) | valueOf(text, 2) | valueOf(text, 3);
}

void putPair(char* text, std::uint32_t bits) { std::memcpy(text, &kPairs[bits], sizeof(Pair)); }

// One or two bytes behind the groups of three.
char* encodeRest(const unsigned char* bytes, std::size_t size, char* text) {
    if (size == 0) return text;
    const std::uint32_t second = size == 2 ? bytes[1] : 0;
    putPair(text, std::uint32_t{bytes[0]} << 4 | second >> 4);
    if (size == 2) text[2] = kAlphabet[(second & 15) << 2];
    return text + size + 1;
}

// Two or three characters behind the groups of four.
char* decodeRest(const char* text, std::size_t size, char* bytes) {
    if (size < 2) return bytes;
    const std::uint32_t bits =
        valueOf(text, 0) | valueOf(text, 1) | (size == 3 ? valueOf(text, 2) : 0);
    if (bits & kInvalid) return nullptr;
    std::memcpy(bytes, &bits, size - 1);
    return bytes + size - 1;
}

}  // namespace

char* encodePlain(const char* bytes, std::size_t size, char* text) {
    constexpr std::size_t kRound = 6;
    std::uint64_t bits = 0;  // of a round in front
    for (; size >= sizeof bits; size -= kRound, bytes += kRound, text += kRound / 3 * 4) {
        std::memcpy(&bits, bytes, sizeof bits);
        bits = __builtin_bswap64(bits);
        for (int pair = 0; pair < 4; ++pair) {
            putPair(text + 2 * pair, static_cast<std::uint32_t>(bits >> (52 - 12 * pair)) & 0xFFF);
        }
    }
    auto from = reinterpret_cast<const unsigned char*>(bytes);
    for (; size >= 3; size -= 3, from += 3, text += 4) {
        const std::uint32_t middle = from[1];
        putPair(text, std::uint32_t{from[0]} << 4 | middle >> 4);
        putPair(text + 2, (middle & 15) << 8 | from[2]);
    }
    return encodeRest(from, size, text);
}

char* decodePlain(const char* text, std::size_t size, char* bytes) {
    // Two groups, written as eight bytes: there is room for those of a third.
    for (; size >= 12; size -= 8, text += 8, bytes += 6) {
        const std::uint32_t front = groupAt(text);
        const std::uint32_t back = groupAt(text + 4);
        if ((front | back) & kInvalid) break;  // which of them: below
        const std::uint64_t both = front | std::uint64_t{back} << 24;
        std::memcpy(bytes, &both, sizeof both);
    }
    for (; size >= 4; size -= 4, text += 4, bytes += 3) {
        const std::uint32_t group = groupAt(text);
        if (group & kInvalid) return nullptr;
        std::memcpy(bytes, &group, 3);
    }
    return decodeRest(text, size, bytes);
}

char* encode(const char* bytes, std::size_t size, char* text) {
    const std::size_t done = hasShuffle() ? encodeBlocks(bytes, size, text) : 0;
    return encodePlain(bytes + done, size - done, text + done / 3 * 4);
}

char* decode(const char* text, std::size_t size, char* bytes) {
    const std::size_t done = hasShuffle() ? decodeBlocks(text, size, bytes) : 0;
    return decodePlain(text + done, size - done, bytes + done / 4 * 3);
}

}  // namespace base64
