#include "crypt/descipher.h"

#include <array>
#include <bit>

#include "crypt/destables.h"

namespace {

// Both halves go through the rounds rotated to the left by one bit: the six bits of each box then
// lie in a byte of their own, of the half itself (boxes 2, 4, 6, 8) or of the half rotated by four
// to the right (boxes 1, 3, 5, 7).
constexpr int kHalfRotation = 1;

// A box and the permutation behind it, in one.
constexpr std::uint32_t substitutedAndPermuted(std::size_t box, std::size_t bits) {
    const std::uint32_t before = std::uint32_t{des::substituted(box, bits)} << (28 - 4 * box);
    std::uint32_t after = 0;
    for (std::size_t i = 0; i < 32; ++i) {
        after = after << 1 | (before >> (32 - des::kPermutation[i]) & 1);
    }
    return std::rotl(after, kHalfRotation);
}

using Boxes = std::array<std::array<std::uint32_t, 64>, 8>;
constexpr Boxes kBoxes = [] {
    Boxes boxes{};
    for (std::size_t box = 0; box < 8; ++box) {
        for (std::size_t bits = 0; bits < 64; ++bits) {
            boxes[box][bits] = substitutedAndPermuted(box, bits);
        }
    }
    return boxes;
}();

struct Halves {
    std::uint32_t left;
    std::uint32_t right;
};

// Swaps bits of `a` at `mask << distance` with those of `b` at `mask`.
void swapBits(std::uint32_t& a, std::uint32_t& b, unsigned distance, std::uint32_t mask) {
    const std::uint32_t difference = (a >> distance ^ b) & mask;
    b ^= difference;
    a ^= difference << distance;
}

std::uint32_t loadWord(const unsigned char* at) {
    return std::uint32_t{at[0]} << 24 | std::uint32_t{at[1]} << 16 | std::uint32_t{at[2]} << 8 |
           at[3];
}

void storeWord(unsigned char* at, std::uint32_t word) {
    for (unsigned i = 0; i < 4; ++i) at[i] = static_cast<unsigned char>(word >> (24 - 8 * i));
}

Halves loadBlock(const unsigned char* data) {
    std::uint32_t left = loadWord(data);
    std::uint32_t right = loadWord(data + 4);
    swapBits(left, right, 4, 0x0F0F0F0F);
    swapBits(left, right, 16, 0x0000FFFF);
    swapBits(right, left, 2, 0x33333333);
    swapBits(right, left, 8, 0x00FF00FF);
    swapBits(left, right, 1, 0x55555555);
    return {std::rotl(left, kHalfRotation), std::rotl(right, kHalfRotation)};
}

// The halves come swapped, as the last round leaves them.
void storeBlock(const Halves& halves, unsigned char* data) {
    std::uint32_t left = std::rotr(halves.right, kHalfRotation);
    std::uint32_t right = std::rotr(halves.left, kHalfRotation);
    swapBits(left, right, 1, 0x55555555);
    swapBits(right, left, 8, 0x00FF00FF);
    swapBits(right, left, 2, 0x33333333);
    swapBits(left, right, 16, 0x0000FFFF);
    swapBits(left, right, 4, 0x0F0F0F0F);
    storeWord(data, left);
    storeWord(data + 4, right);
}

std::uint32_t roundFunction(std::uint32_t half, const std::uint32_t* words) {
    const std::uint32_t odd = (std::rotr(half, 4) ^ words[0]) & 0x3F3F3F3F;
    const std::uint32_t even = (half ^ words[1]) & 0x3F3F3F3F;
    return (kBoxes[0][odd >> 24] ^ kBoxes[2][odd >> 16 & 255] ^ kBoxes[4][odd >> 8 & 255] ^
            kBoxes[6][odd & 255]) ^
           (kBoxes[1][even >> 24] ^ kBoxes[3][even >> 16 & 255] ^ kBoxes[5][even >> 8 & 255] ^
            kBoxes[7][even & 255]);
}

// Several blocks side by side: the look-ups of one wait while those of another go on.
template <std::size_t kCount>
void transformBlocks(const std::uint32_t* words, unsigned char* data) {
    std::array<Halves, kCount> halves;
    for (std::size_t i = 0; i < kCount; ++i) halves[i] = loadBlock(data + i * kDesBlock);
    for (std::size_t word = 0; word < kDesWords; word += 4) {
        for (Halves& each : halves) each.left ^= roundFunction(each.right, words + word);
        for (Halves& each : halves) each.right ^= roundFunction(each.left, words + word + 2);
    }
    for (std::size_t i = 0; i < kCount; ++i) storeBlock(halves[i], data + i * kDesBlock);
}

}  // namespace

void desTransform(const std::uint32_t* words, unsigned char* data, std::size_t blocks) {
    constexpr std::size_t kSideBySide = 2;
    for (; blocks >= kSideBySide; blocks -= kSideBySide, data += kSideBySide * kDesBlock) {
        transformBlocks<kSideBySide>(words, data);
    }
    for (; blocks > 0; --blocks, data += kDesBlock) transformBlocks<1>(words, data);
}
