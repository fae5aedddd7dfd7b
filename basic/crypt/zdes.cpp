// Key schedule and calls. The data goes through descipher.cpp.

#include "zbasic/zdes.h"

#include <array>
#include <cstddef>

#include "crypt/descipher.h"
#include "crypt/destables.h"

namespace {

constexpr std::size_t kRounds = 16;

// What seven of the 56 key bits contribute to a subkey, for all their values: the subkey's two
// words, the first one above. The words hold its groups of six bits in bytes: groups 1, 3, 5, 7 and
// 2, 4, 6, 8.
using Selection = std::array<std::array<std::uint64_t, 128>, 8>;

// Where bit `i` (from 0) of the 48 lies.
constexpr std::uint64_t placeInWords(std::size_t i) {
    const std::size_t group = i / 6;
    const std::size_t byte = group % 2 * 4 + group / 2;
    return std::uint64_t{1} << (8 * (7 - byte) + 5 - i % 6);
}

constexpr Selection makeSelection() {
    Selection selection{};
    for (std::size_t i = 0; i < 48; ++i) {
        const std::size_t source = des::kSelection2[i] - 1u;
        const std::size_t mask = 0x40u >> source % 7;
        for (std::size_t bits = 0; bits < 128; ++bits) {
            if (bits & mask) selection[source / 7][bits] |= placeInWords(i);
        }
    }
    return selection;
}

constexpr Selection kSelection = makeSelection();

std::uint64_t subkey(std::uint32_t c, std::uint32_t d) {
    return kSelection[0][c >> 21] | kSelection[1][c >> 14 & 127] | kSelection[2][c >> 7 & 127] |
           kSelection[3][c & 127] | kSelection[4][d >> 21] | kSelection[5][d >> 14 & 127] |
           kSelection[6][d >> 7 & 127] | kSelection[7][d & 127];
}

std::uint32_t rotated28(std::uint32_t half, unsigned count) {
    return (half << count | half >> (28 - count)) & 0x0FFFFFFF;
}

std::uint64_t swapped(std::uint64_t bits, unsigned distance, std::uint64_t mask) {
    const std::uint64_t difference = (bits >> distance ^ bits) & mask;
    return bits ^ difference ^ difference << distance;
}

// The key as an 8 x 8 matrix of bits, mirrored so that each byte is one column of the key from its
// last byte to its first; the columns from left to right.
std::uint64_t columns(const unsigned char* key) {
    std::uint64_t bits = 0;
    for (std::size_t i = kDesBlock; i-- > 0;) bits = bits << 8 | key[i];
    bits = swapped(bits, 7, 0x00AA00AA00AA00AA);
    bits = swapped(bits, 14, 0x0000CCCC0000CCCC);
    return swapped(bits, 28, 0x00000000F0F0F0F0);
}

struct Halves {
    std::uint32_t c;
    std::uint32_t d;
};

// "PC-1": the columns 1 to 3 and half of the fourth, and 7 to 5 and the other half. The eighth
// column is the parity.
Halves selected1(const unsigned char* key) {
    const std::uint64_t bits = columns(key);
    const auto column = [bits](unsigned i) {
        return static_cast<std::uint32_t>(bits >> (64 - 8 * i)) & 0xFF;
    };
    return {column(1) << 20 | column(2) << 12 | column(3) << 4 | column(4) >> 4,
            column(7) << 20 | column(6) << 12 | column(5) << 4 | (column(4) & 15)};
}

std::size_t count(int blocks) { return blocks > 0 ? static_cast<std::size_t>(blocks) : 0; }

}  // namespace

void ades_key(des_ctx* schedule, const unsigned char* key8) {
    auto [c, d] = selected1(key8);
    for (std::size_t round = 0; round < kRounds; ++round) {
        c = rotated28(c, des::kShifts[round]);
        d = rotated28(d, des::kShifts[round]);
        const std::uint64_t words = subkey(c, d);
        const auto first = static_cast<std::uint32_t>(words >> 32);
        const auto second = static_cast<std::uint32_t>(words);
        schedule->words[2 * round] = first;
        schedule->words[2 * round + 1] = second;
        const std::size_t reverse = kDesWords + 2 * (kRounds - 1 - round);
        schedule->words[reverse] = first;
        schedule->words[reverse + 1] = second;
    }
}

void ades_enc(des_ctx* schedule, unsigned char* data, int blocks) {
    desTransform(schedule->words, data, count(blocks));
}

void ades_dec(des_ctx* schedule, unsigned char* data, int blocks) {
    desTransform(schedule->words + kDesWords, data, count(blocks));
}
