// DES on the words of a schedule.

#pragma once

#include <cstddef>
#include <cstdint>

// The words of one direction: a pair for each of the 16 rounds.
constexpr std::size_t kDesWords = 32;
constexpr std::size_t kDesBlock = 8;

// Any number of blocks where they lie.
void desTransform(const std::uint32_t* words, unsigned char* data, std::size_t blocks);
